// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// Which service explains: sample answers, what Info.json names, or one that is entered here.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    readonly property ServiceForm service: section.computer.service
    readonly property bool isOwn: section.service.mode === ServiceForm.Own && !section.service.isForced

    property bool asksToRemove: false

    onIsOwnChanged: section.asksToRemove = false

    title: section.english ? "Who explains" : "由谁来解释"

    function begin(): void {
        if (section.service.isForced)
            return
        if (!section.isOwn)
            section.service.choose(ServiceForm.Own)
        address.forceActiveFocus(Qt.OtherFocusReason)
    }
    function fill(): void {
        address.text = section.service.base
        model.text = section.service.model
    }
    function askToRemove(asks: bool): void {
        section.asksToRemove = asks
        if (asks) {
            keep.forceActiveFocus(Qt.OtherFocusReason)
            announcer.announce(question.text)
        } else {
            saveButton.forceActiveFocus(Qt.OtherFocusReason)
        }
    }
    function save(): void {
        if (section.service.save(address.text, model.text, key.text)) {
            key.text = ""
            key.isRevealed = false
            section.fill()
        }
    }

    Component.onCompleted: {
        section.fill()
        section.service.edited(address.text)
    }

    Connections {
        target: section.service

        function onChanged(): void {
            if (outcome.said !== section.service.outcome) {
                outcome.said = section.service.outcome
                announcer.announce(outcome.said)
            }
        }
    }

    StatusLine {
        objectName: "configurationFault"
        width: parent.width
        visible: section.service.fault.length > 0
        status: StatusLine.Bad
        title: section.english ? "Configuration" : "配置"
        text: section.service.fault
    }
    Label {
        width: parent.width
        visible: section.service.isForced
        text: section.english ? "%1, as the environment that vellumo was started with says. It goes before everything that is entered here; start vellumo without it to choose here."
                                  .arg(section.service.host)
                              : "%1,由启动 vellumo 时的环境变量指定。它优先于这里的一切设置;去掉环境变量后启动,就可以在这里选择。"
                                  .arg(section.service.host)
        wrapMode: Text.Wrap
        lineFactor: Units.readingLine
    }
    SegmentedPicker {
        objectName: "mode"
        visible: !section.service.isForced
        labels: {
            const named = section.service.hasConfigured
            return section.english ? (named ? ["Samples", "As installed", "Own service"]
                                            : ["Sample answers", "Own service"])
                                   : (named ? ["示例", "随安装设置", "自己的服务"]
                                            : ["示例回答", "自己的服务"])
        }
        values: section.service.hasConfigured
            ? [ServiceForm.Samples, ServiceForm.Configured, ServiceForm.Own]
            : [ServiceForm.Samples, ServiceForm.Own]
        value: section.service.mode
        accessibleName: section.title
        onChosen: value => section.service.choose(value)
    }
    Label {
        width: parent.width
        visible: !section.service.isForced && !section.isOwn
        text: section.service.mode === ServiceForm.Samples
            ? (section.english ? "Every double tap is answered with one of a few samples, marked as such, so that you can see how it works."
                               : "每次双击都用几条固定的示例来回答,并注明是示例,方便你了解它怎么用。")
            : (section.english ? "%1, as Info.json names it: yours in %2, or the installation's."
                                   .arg(section.service.host).arg(section.service.file)
                               : "%1,由 Info.json 指定:你自己的(%2)或随安装附带的。"
                                   .arg(section.service.host).arg(section.service.file))
        wrapMode: Text.Wrap
        color: Theme.secondInk
        font.pixelSize: Units.type12
        lineFactor: Units.readingLine
    }

    Column {
        width: parent.width
        visible: section.isOwn
        spacing: Units.space16

        Label {
            width: parent.width
            text: section.english ? "Any service that speaks the chat-completions interface, or a model server on your own computer."
                                  : "任何支持 chat-completions 接口的服务,或者你自己电脑上的模型服务器。"
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
            lineFactor: Units.readingLine
        }
        TextField {
            id: address

            objectName: "address"
            width: parent.width
            label: section.english ? "Base address" : "接口地址"
            placeholder: section.service.usualBase
            readOnly: section.service.isBaseFixed
            error: section.service.addressError
            help: section.service.isBaseFixed
                ? (section.english ? "Set by OPENAI_BASE_URL in the environment, which goes first."
                                   : "由环境变量 OPENAI_BASE_URL 指定,优先于这里。")
                : (section.english ? "Often ends in /v1, such as http://localhost:11434/v1."
                                   : "通常以 /v1 结尾,例如 http://localhost:11434/v1。")
            onEdited: section.service.edited(address.text)
            onAccepted: section.save()
        }
        TextField {
            id: model

            objectName: "model"
            width: parent.width
            label: section.english ? "Model" : "模型"
            placeholder: section.service.usualModel
            readOnly: section.service.isModelFixed
            help: section.service.isModelFixed
                ? (section.english ? "Set by VELLUMO_MODEL in the environment, which goes first."
                                   : "由环境变量 VELLUMO_MODEL 指定,优先于这里。") : ""
            onEdited: section.service.edited(address.text)
            onAccepted: section.save()
        }
        TextField {
            id: key

            objectName: "key"
            width: parent.width
            secret: true
            label: section.english ? "Key" : "密钥"
            revealName: section.english ? "Show the key" : "显示密钥"
            placeholder: section.service.hasKey ? "••••••••••••" : ""
            help: section.service.keyText
            onEdited: section.service.edited(address.text)
            onAccepted: section.save()
        }
        Flow {
            width: parent.width
            visible: !section.asksToRemove
            spacing: Units.space8

            TextButton {
                id: saveButton

                objectName: "save"
                primary: true
                text: section.english ? "Save" : "保存"
                onClicked: section.save()
            }
            TextButton {
                objectName: "tryOut"
                enabled: !section.service.isTrying
                text: section.service.isTrying ? (section.english ? "Trying…" : "正在测试…")
                                               : (section.english ? "Try it" : "测试一下")
                onClicked: section.service.tryOut(address.text, model.text, key.text)
            }
            TextButton {
                objectName: "unlock"
                visible: section.service.canUnlock
                text: section.english ? "Unlock the keyring" : "解锁密钥环"
                onClicked: section.service.unlock()
            }
            TextButton {
                objectName: "forgetKey"
                visible: section.service.canForgetKey
                quiet: true
                text: section.english ? "Remove the key" : "移除密钥"
                onClicked: section.askToRemove(true)
            }
        }
        Flow {
            width: parent.width
            visible: section.asksToRemove
            spacing: Units.space8

            Keys.onEscapePressed: section.askToRemove(false)

            Label {
                id: question

                width: parent.width
                text: section.english ? "Remove the key from the keyring? It cannot be brought back from here."
                                      : "要从密钥环里移除密钥吗?移除后无法在这里恢复。"
                wrapMode: Text.Wrap
                lineFactor: Units.readingLine
            }
            TextButton {
                id: keep

                objectName: "keepKey"
                text: section.english ? "Keep it" : "保留"
                onClicked: section.askToRemove(false)
            }
            TextButton {
                objectName: "removeKey"
                text: section.english ? "Remove" : "移除"
                onClicked: {
                    section.askToRemove(false)
                    section.service.forgetKey()
                }
            }
        }
        StatusLine {
            id: outcome

            property string said: ""
            readonly property string problem: section.service.isInUse
                ? section.computer.explanationProblem : ""

            objectName: "outcome"
            width: parent.width
            visible: title.length > 0
            status: section.service.isGood ? StatusLine.Good
                  : section.service.outcome.length + problem.length > 0 ? StatusLine.Bad
                                                                        : StatusLine.Neutral
            title: section.service.outcome.length > 0 ? section.service.outcome
                : section.service.isInUse ? problem
                : (section.english ? "Not in use yet: fill this in and save it."
                                   : "还没有启用:填好后保存。")
        }
    }
    Rectangle {
        width: parent.width
        height: Units.hairline
        color: Theme.hairline

        Announcer {
            id: announcer
        }
    }
    WhatIsSent {
        width: parent.width
        service: section.service
        english: section.english
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The form for an own service: address, model and key, the buttons, and the result.
Column {
    id: entry

    required property ComputerModel computer
    required property bool english

    readonly property ServiceForm service: entry.computer.service

    property bool asksToRemove: false

    spacing: Units.space16

    function begin(): void {
        address.forceActiveFocus(Qt.OtherFocusReason)
    }
    function fill(): void {
        address.text = entry.service.base
        model.text = entry.service.model
    }
    function askToRemove(asks: bool): void {
        entry.asksToRemove = asks
        if (asks)
            removal.ask()
        else
            saveButton.forceActiveFocus(Qt.OtherFocusReason)
    }
    function save(): void {
        if (entry.service.save(address.text, model.text, key.text)) {
            key.text = ""
            key.isRevealed = false
            entry.fill()
        }
    }

    Component.onCompleted: {
        entry.fill()
        entry.service.edited(address.text)
    }

    Connections {
        target: entry.service

        function onChanged(): void {
            if (outcome.said !== entry.service.outcome) {
                outcome.said = entry.service.outcome
                announcer.announce(outcome.said)
            }
        }
    }

    Label {
        width: parent.width
        text: entry.english ? "Any service with a chat-completions API, or a model running on your own computer."
                            : "任何支持 chat-completions 接口的服务，或者你自己电脑上的模型服务器。"
        wrapMode: Text.Wrap
        color: Theme.secondInk
        font.pixelSize: Units.type12
        lineFactor: Units.readingLine

        Announcer {
            id: announcer
        }
    }
    TextField {
        id: address

        objectName: "address"
        width: parent.width
        label: entry.english ? "Base URL" : "API 地址"
        placeholder: entry.service.defaultBase
        readOnly: entry.service.isBaseFixed
        error: entry.service.addressError
        help: entry.service.isBaseFixed
            ? (entry.english ? "Set by OPENAI_BASE_URL in the environment, which overrides this field."
                             : "由环境变量 OPENAI_BASE_URL 指定，优先于这里。")
            : (entry.english ? "Usually ends in /v1, for example http://localhost:11434/v1."
                             : "通常以 /v1 结尾，例如 http://localhost:11434/v1。")
        onEdited: entry.service.edited(address.text)
        onAccepted: entry.save()
    }
    TextField {
        id: model

        objectName: "model"
        width: parent.width
        label: entry.english ? "Model" : "模型"
        placeholder: entry.service.defaultModel
        readOnly: entry.service.isModelFixed
        help: entry.service.isModelFixed
            ? (entry.english ? "Set by VELLUMO_MODEL in the environment, which overrides this field."
                             : "由环境变量 VELLUMO_MODEL 指定，优先于这里。") : ""
        onEdited: entry.service.edited(address.text)
        onAccepted: entry.save()
    }
    TextField {
        id: key

        objectName: "key"
        width: parent.width
        secret: true
        label: entry.english ? "API key" : "API 密钥"
        revealName: entry.english ? "Show the key" : "显示密钥"
        placeholder: entry.service.hasKey ? "••••••••••••" : ""
        help: entry.service.keyText
        onEdited: entry.service.edited(address.text)
        onAccepted: entry.save()
    }
    Flow {
        width: parent.width
        visible: !entry.asksToRemove
        spacing: Units.space8

        TextButton {
            id: saveButton

            objectName: "save"
            primary: true
            text: entry.english ? "Save" : "保存"
            onClicked: entry.save()
        }
        TextButton {
            objectName: "tryOut"
            enabled: !entry.service.isTrying
            text: entry.service.isTrying ? (entry.english ? "Testing…" : "正在测试…")
                                           : (entry.english ? "Test" : "测试")
            onClicked: entry.service.tryOut(address.text, model.text, key.text)
        }
        TextButton {
            objectName: "unlock"
            visible: entry.service.canUnlock
            text: entry.english ? "Unlock the keyring" : "解锁密钥环"
            onClicked: entry.service.unlock()
        }
        TextButton {
            objectName: "forgetKey"
            visible: entry.service.canForgetKey
            quiet: true
            text: entry.english ? "Remove the key" : "移除密钥"
            onClicked: entry.askToRemove(true)
        }
    }
    RemoveKeyQuestion {
        id: removal

        width: parent.width
        visible: entry.asksToRemove
        english: entry.english
        onKept: entry.askToRemove(false)
        onRemoved: {
            entry.askToRemove(false)
            entry.service.forgetKey()
        }
    }
    StatusLine {
        id: outcome

        property string said: ""
        readonly property string problem: entry.service.isInUse
            ? entry.computer.explanationProblem : ""

        objectName: "outcome"
        width: parent.width
        visible: title.length > 0
        status: entry.service.isGood ? StatusLine.Good
              : entry.service.outcome.length + problem.length > 0 ? StatusLine.Bad
                                                                    : StatusLine.Neutral
        title: entry.service.outcome.length > 0 ? entry.service.outcome
            : entry.service.isInUse ? problem
            : (entry.english ? "Not in use yet. Fill in the fields and save."
                             : "还没有启用：填好后保存。")
    }
}

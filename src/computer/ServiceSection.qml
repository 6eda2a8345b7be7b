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

    onIsOwnChanged: entry.asksToRemove = false

    title: section.english ? "Who explains" : "由谁来解释"

    function begin(): void {
        if (section.service.isForced)
            return
        if (!section.isOwn)
            section.service.choose(ServiceForm.Own)
        entry.begin()
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
    ServiceEntry {
        id: entry

        width: parent.width
        visible: section.isOwn
        computer: section.computer
        english: section.english
    }
    Rectangle {
        width: parent.width
        height: Units.hairline
        color: Theme.hairline
    }
    WhatIsSent {
        width: parent.width
        service: section.service
        english: section.english
    }
}

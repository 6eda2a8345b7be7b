// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The choice of the service: sample answers, the one of Info.json, or one entered here.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    readonly property ServiceForm service: section.computer.service
    readonly property bool isOwn: section.service.mode === ServiceForm.Own && !section.service.isForced

    onIsOwnChanged: entry.asksToRemove = false

    title: section.english ? "Explanation service" : "解释服务"

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
        text: section.service.choiceText
        wrapMode: Text.Wrap
        lineFactor: Units.readingLine
    }
    SegmentedPicker {
        objectName: "mode"
        visible: !section.service.isForced
        labels: {
            const named = section.service.hasConfigured
            return section.english ? (named ? ["Samples", "Preconfigured", "Your own"]
                                            : ["Sample answers", "Your own"])
                                   : (named ? ["示例", "预设服务", "自己的服务"]
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
        text: section.service.choiceText
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

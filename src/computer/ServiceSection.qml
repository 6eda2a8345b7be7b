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
    StatusLine {
        readonly property string problem: section.computer.explanationProblem
        readonly property bool isSample: section.service.mode === ServiceForm.Samples

        objectName: "serviceState"
        width: parent.width
        visible: !section.isOwn
        status: problem.length > 0 ? StatusLine.Bad
              : isSample ? StatusLine.Neutral : StatusLine.Good
        title: section.service.isForced ? (section.english ? "A service of the environment is in use"
                                                          : "正在使用环境变量指定的服务")
             : isSample ? (section.english ? "Sample answers are in use" : "正在使用示例回答")
                        : (section.english ? "The preconfigured service is in use" : "正在使用预设服务")
        stateName: problem.length === 0 ? "" : section.english ? "Problem" : "有问题"
        text: section.service.choiceText + (problem.length === 0 ? ""
            : "\n" + section.computer.explanationTime + " · " + problem)
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

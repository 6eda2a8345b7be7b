// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The last failure of explanations and of the sync, with advice.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english
    required property bool syncsNotes
    required property string syncProblem
    required property date syncTime

    readonly property string none: section.english ? "None since vellumo started."
                                                   : "启动以来没有出现问题。"

    title: section.english ? "Problems" : "最近的问题"

    StatusLine {
        readonly property string problem: section.computer.explanationProblem

        objectName: "explanationProblem"
        width: parent.width
        status: problem.length > 0 ? StatusLine.Bad : StatusLine.Good
        title: (section.english ? "Explanations" : "解释")
            + (problem.length > 0 ? " · " + section.computer.explanationTime : "")
        text: problem.length > 0 ? problem : section.none
    }
    StatusLine {
        objectName: "syncProblem"
        width: parent.width
        visible: section.syncsNotes
        status: section.syncProblem.length > 0 ? StatusLine.Bad : StatusLine.Good
        title: (section.english ? "Sync" : "同步")
            + (section.syncProblem.length > 0 ? " · " + section.computer.timeText(section.syncTime) : "")
        text: section.syncProblem.length > 0 ? section.syncProblem : section.none
    }
}

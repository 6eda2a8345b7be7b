// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The features of this desktop that vellumo uses, and the consequences of missing ones.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    title: section.english ? "Support on this desktop" : "当前桌面的支持情况"

    ActionLine {
        readonly property TapReach taps: section.computer.taps

        width: parent.width
        lineName: "session"
        status: taps.isEverywhere ? StatusLine.Good : StatusLine.Limited
        stateName: taps.isEverywhere ? (section.english ? "works" : "可用")
                                     : (section.english ? "limited" : "受限")
        title: taps.title
        text: taps.text
        buttonName: "changeReach"
        buttonText: taps.actionText
        primary: !taps.isUndo
        canAct: !taps.isBusy
        onActed: taps.act()
    }
    Repeater {
        model: section.computer.facts

        StatusLine {
            required property var modelData

            objectName: modelData.name
            width: parent ? parent.width : 0
            status: !modelData.isKnown ? StatusLine.Neutral
                  : modelData.works ? StatusLine.Good : StatusLine.Limited
            stateName: !modelData.isKnown ? (section.english ? "not known yet" : "尚不清楚")
                     : modelData.works ? (section.english ? "works" : "可用")
                                       : (section.english ? "limited" : "受限")
            title: modelData.title
            text: modelData.text
        }
    }
}

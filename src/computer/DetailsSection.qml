// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The features of this desktop that vellumo uses, and the consequences of missing ones. Unfolded
/// from the start if the user can do something about one.
Column {
    id: section

    required property ComputerModel computer
    required property bool english
    property bool isUnfolded: false

    readonly property bool needsAction: section.computer.needsAction

    spacing: Units.space8

    onNeedsActionChanged: {
        if (section.needsAction)
            section.isUnfolded = true
    }
    Component.onCompleted: section.isUnfolded = section.needsAction

    FoldingHeading {
        objectName: "details"
        width: parent.width
        text: section.english ? "Details of this desktop" : "当前桌面的详细情况"
        isUnfolded: section.isUnfolded
        onClicked: section.isUnfolded = !section.isUnfolded
    }
    Card {
        width: parent.width
        height: facts.height + 2 * Units.space20
        visible: section.isUnfolded

        Column {
            id: facts

            anchors.top: parent.top
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: Units.space20
            spacing: Units.space16

            Repeater {
                model: section.computer.facts

                StatusLine {
                    required property var modelData

                    objectName: modelData.name
                    width: parent ? parent.width : 0
                    status: modelData.needsAction ? StatusLine.Limited
                          : modelData.isKnown && modelData.works ? StatusLine.Good
                                                                 : StatusLine.Neutral
                    stateName: !modelData.isKnown ? (section.english ? "not known yet" : "尚不清楚")
                             : modelData.works ? (section.english ? "works" : "可用")
                                               : (section.english ? "limited" : "受限")
                    title: modelData.title
                    text: modelData.text
                }
            }
        }
    }
}

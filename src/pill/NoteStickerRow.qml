// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// One note as a card: what was read, what it means, and how often it was asked about.
Item {
    id: row

    required property string sourceText
    required property string detail
    required property string asked

    readonly property bool hovering: hover.hovered

    signal action

    implicitHeight: Units.space8 + source.height + Units.cardGap + meaning.height
                    + (row.asked.length > 0 ? Units.cardGap + questions.height : 0) + Units.space8

    Accessible.role: Accessible.Button
    Accessible.name: row.sourceText
    Accessible.description: row.detail
    Accessible.onPressAction: row.action()

    Rectangle {
        anchors.fill: parent
        radius: Units.radius10
        color: row.hovering ? Theme.cardHovered : Theme.card

        Behavior on color {
            enabled: Units.animated
            ColorAnimation { duration: Units.quick }
        }
    }

    TextLine {
        id: source

        anchors.top: parent.top
        anchors.topMargin: Units.space8
        anchors.left: parent.left
        anchors.leftMargin: Units.space12
        anchors.right: parent.right
        anchors.rightMargin: Units.space12
        text: row.sourceText
        color: Theme.islandText
        size: Units.type13
        weight: Font.Medium
    }
    TextLine {
        id: meaning

        anchors.top: source.bottom
        anchors.topMargin: Units.cardGap
        anchors.left: source.left
        anchors.right: source.right
        text: row.detail
        color: Theme.islandSecondText
        size: Units.type11
    }
    TextLine {
        id: questions

        anchors.top: meaning.bottom
        anchors.topMargin: Units.cardGap
        anchors.left: source.left
        anchors.right: source.right
        visible: row.asked.length > 0
        text: row.asked
        color: Theme.islandThirdText
        size: Units.type10
        family: "DejaVu Sans" // the interface's fonts have this arrow as an emoji only
        weight: Font.Medium
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: row.action()
    }
}

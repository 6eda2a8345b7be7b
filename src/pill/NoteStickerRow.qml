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
    readonly property int gap: 3

    signal action

    implicitHeight: Units.space8 + source.height + row.gap + meaning.height
                    + (row.asked.length > 0 ? row.gap + questions.height : 0) + Units.space8

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

        x: Units.space12
        y: Units.space8
        width: row.width - 2 * Units.space12
        text: row.sourceText
        color: Theme.islandText
        size: Units.type13
        weight: Font.Medium
    }
    TextLine {
        id: meaning

        x: Units.space12
        y: source.y + source.height + row.gap
        width: row.width - 2 * Units.space12
        text: row.detail
        color: Theme.islandSecondText
        size: Units.type11
    }
    TextLine {
        id: questions

        x: Units.space12
        y: meaning.y + meaning.height + row.gap
        width: row.width - 2 * Units.space12
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

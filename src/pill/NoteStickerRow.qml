// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// One note as a card: what was read, what it means, and how often it was asked about.
Item {
    id: row

    required property string sourceText
    required property string detail
    required property int followUps

    readonly property bool hovering: hover.hovered
    readonly property int gap: 3

    signal action

    implicitHeight: Units.space8 + source.height + row.gap + meaning.height
                    + (asked.visible ? row.gap + asked.height : 0) + Units.space8

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

    // Lines keep their places whatever script they hold: Chinese fonts are taller than Latin ones.
    component CardLine: Item {
        id: line

        property alias text: words.text
        property alias color: words.color
        property alias font: words.font
        property real factor: Units.cardLine

        x: Units.space12
        width: row.width - 2 * Units.space12
        height: Math.round(words.font.pixelSize * line.factor)

        Text {
            id: words

            y: Math.round(line.height * 0.76) - Math.round(words.baselineOffset)
            width: line.width
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
        }
    }

    CardLine {
        id: source

        y: Units.space8
        text: row.sourceText
        color: Theme.islandText
        font.pixelSize: Units.type13
        font.weight: Font.Medium
    }
    CardLine {
        id: meaning

        y: source.y + source.height + row.gap
        text: row.detail
        color: Theme.islandSecondText
        font.pixelSize: Units.type11
    }
    CardLine {
        id: asked

        y: meaning.y + meaning.height + row.gap
        visible: row.followUps > 0
        text: "↩ " + row.followUps
        color: Theme.islandThirdText
        font.pixelSize: Units.type10
        font.weight: Font.Medium
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: row.action()
    }
}

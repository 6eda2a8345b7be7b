// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Pill
import Vellumo.Ui

/// What the collapsed pill says: a dot, and how many notes there are.
Item {
    id: label

    required property NotesPillModel pill

    readonly property real room: label.width - dot.width - Units.space8 - 2 * Units.space12

    Rectangle {
        id: dot

        x: Math.round((label.width - width - Units.space8 - words.width) / 2)
        y: (label.height - height) / 2
        width: Units.pillDot
        height: Units.pillDot
        radius: Units.pillDot / 2
        color: label.pill.pillHovered ? Theme.islandText : Theme.islandBody
    }
    Text {
        id: words

        x: dot.x + dot.width + Units.space8
        objectName: "count"
        width: Math.min(Math.ceil(implicitWidth), label.room)
        height: label.height
        text: label.pill.label
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: Theme.islandText
        // the pill has one size, so larger text grows as far as the number stays whole
        font.pixelSize: Math.max(10, Math.min(Units.type13,
            Math.floor(Units.type13 * label.room / usual.advanceWidth)))
        font.weight: Font.Medium
    }
    TextMetrics {
        id: usual

        text: label.pill.label
        font.family: words.font.family
        font.pixelSize: Units.type13
        font.weight: Font.Medium
    }
}

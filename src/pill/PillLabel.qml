// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Pill
import Vellumo.Ui

/// What the collapsed pill says: a dot, and how many notes there are.
Item {
    id: label

    required property NotesPillModel pill

    readonly property string text: label.pill.count < 1 ? "Notes" : "Notes " + label.pill.count

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
        width: Math.min(Math.ceil(implicitWidth),
                        label.width - dot.width - Units.space8 - 2 * Units.space12)
        height: label.height
        text: label.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: Theme.islandText
        font.pixelSize: Units.type13
        font.weight: Font.Medium
    }
}

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

        anchors.left: parent.left
        anchors.leftMargin: Math.round((label.width - width - Units.space8 - words.width) / 2)
        anchors.verticalCenter: parent.verticalCenter
        anchors.alignWhenCentered: false
        width: Units.pillDot
        height: Units.pillDot
        radius: Units.pillDot / 2
        color: label.pill.pillHovered ? Theme.islandText : Theme.islandBody
    }
    Text {
        id: words

        anchors.left: dot.right
        anchors.leftMargin: Units.space8
        objectName: "count"
        width: Math.min(Math.ceil(implicitWidth), label.room)
        height: label.height
        text: label.pill.label
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: Theme.islandText
        // the pill has one size, so larger text grows as far as the number stays whole
        font.pixelSize: Math.max(Units.minType, Math.min(Units.type13,
            Math.floor(Units.type13 * label.room / fullSize.advanceWidth)))
        font.weight: Font.Medium
    }
    TextMetrics {
        id: fullSize

        text: label.pill.label
        font.family: words.font.family
        font.pixelSize: Units.type13
        font.weight: Font.Medium
    }
}

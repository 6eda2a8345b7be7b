// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The pill, drawn as it is when it asks for attention.
Rectangle {
    id: pill

    width: dot.width + Units.space8 + words.width + 2 * Units.space24
    height: Math.max(Units.pillHeight, words.height + Units.space20)
    radius: height / 2
    color: Theme.islandGround
    border.width: Units.pillOutline
    border.color: Theme.accent

    Accessible.role: Accessible.StaticText
    Accessible.name: words.text

    Rectangle {
        id: dot

        anchors.left: parent.left
        anchors.leftMargin: Units.space24
        anchors.verticalCenter: parent.verticalCenter
        width: Units.scaled(Units.pillDot)
        height: width
        radius: width / 2
        color: Theme.islandBody
    }
    Text {
        id: words

        anchors.left: dot.right
        anchors.leftMargin: Units.space8
        anchors.verticalCenter: parent.verticalCenter
        text: "Notes"
        textFormat: Text.PlainText
        color: Theme.islandText
        font.pixelSize: Units.type13
        font.weight: Font.Medium
        Accessible.ignored: true
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// The selected text, at most two lines of it, beside a bar.
Item {
    id: quote

    required property string text

    implicitHeight: label.height

    Rectangle {
        anchors.left: parent.left
        width: Units.space2
        height: parent.height
        radius: width / 2
        color: Theme.islandControlHovered
    }
    Text {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Units.space12
        anchors.right: parent.right
        text: quote.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 2
        color: Theme.islandSecondText
        font.pixelSize: Units.type13
        lineHeightMode: Text.FixedHeight
        lineHeight: Math.round(Units.type13 * Units.readingLine)
    }
}

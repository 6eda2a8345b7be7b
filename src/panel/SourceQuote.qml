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
        width: Units.space2
        height: parent.height
        radius: 1
        color: Theme.islandControlHovered
    }
    Text {
        id: label

        x: Units.space12
        width: parent.width - x
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

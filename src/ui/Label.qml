// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// Plain text of an ordinary window, whose lines keep one distance whatever script they hold.
Text {
    id: label

    property real lineFactor: Units.cardLine

    textFormat: Text.PlainText
    color: Theme.ink
    font.pixelSize: Units.type13
    lineHeightMode: Text.FixedHeight
    lineHeight: Math.round(label.font.pixelSize * label.lineFactor)

    Binding {
        target: label
        property: "font.family"
        value: Units.chineseFamily
        when: Units.hasChineseQuotes(label.text)
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: label.text
}

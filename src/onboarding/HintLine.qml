// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Asks whether something was seen, and says so once it was.
Label {
    id: hint

    required property bool passed
    required property bool english
    required property string question

    width: parent.width
    text: hint.passed ? (hint.english ? "✓ That's it" : "✓ 就是这样") : hint.question
    wrapMode: Text.Wrap
    horizontalAlignment: Text.AlignHCenter
    color: hint.passed ? Theme.goodText : Theme.secondInk
    font.pixelSize: Units.type15
    font.weight: hint.passed ? Font.DemiBold : Font.Normal
    lineFactor: Units.readingLine

    onPassedChanged: {
        if (hint.passed)
            announcer.announce(hint.text)
    }

    Announcer {
        id: announcer
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Lets the user try the double tap.
CardFrame {
    id: card

    title: card.english ? "Double-tap Option" : "按两下 Option"
    subtitle: card.english ? "On most keyboards, Option is the key marked Alt."
                           : "在大多数键盘上，Option 就是标着 Alt 的键。"
    continueName: "gestureContinueButton"
    continueText: card.english ? "Yes, continue" : "可以了,继续"
    canContinue: card.flow.isTestPassed
    quietText: card.english ? "Skip" : "跳过"
    isQuietOver: card.flow.isTestPassed

    onProceeded: card.flow.advance()
    onSkipped: card.flow.advance()

    KeyboardDiagram {
        objectName: "keyboardDiagram"
        width: parent.width
        letters: card.flow.keyLabels
        hasRightOption: card.flow.hasRightOption
        isOptionDown: card.flow.isOptionDown
        isLow: card.isCramped
    }
    HintLine {
        objectName: "gestureHintLabel"
        passed: card.flow.isTestPassed
        english: card.english
        question: card.english ? "See the key light up?" : "看到按键亮了吗?"
    }
}

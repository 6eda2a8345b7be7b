// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Lets the user try a selection, which the real panel answers.
CardFrame {
    id: card

    title: card.english ? "Now try selecting" : "现在选中文字试试"
    subtitle: {
        if (card.isCramped)
            return "" // the sample says the same
        return card.english ? "Select some words below, then double-tap Option."
                            : "选中下面的几个词，再按两下 Option。"
    }
    // the panel comes down over a window that fills the screen
    low: Screen.height < Units.onboardingHeight + Units.onboardingPanelRoom
    continueName: "selectContinueButton"
    continueText: card.english ? "Yes, continue" : "看到了,继续"
    canContinue: card.flow.isTestPassed
    quietText: card.english ? "Skip" : "跳过"
    isQuietOver: card.flow.isTestPassed

    onProceeded: card.flow.advance()
    onSkipped: card.flow.advance()

    Card {
        width: parent.width
        height: sample.height + 2 * sample.y

        ReadingText {
            id: sample

            island: false
            objectName: "sample"
            x: Units.space24
            y: card.isCramped ? Units.space12 : Units.space24
            width: parent.width - 2 * x
            activeFocusOnTab: true
            persistentSelection: true
            selectByKeyboard: true
            text: "vellumo is a reading assistant for your Mac. Select any text you don't understand, double-tap Option, and a short explanation appears at the top of your screen."
            color: Theme.ink
            selectionColor: Theme.selection
            selectedTextColor: Theme.ink
            font.pixelSize: Units.type17
        }
        FocusRing {
            shown: sample.activeFocus && sample.selectedText.length === 0
            controlRadius: Units.radius14
        }
    }
    HintLine {
        objectName: "selectHintLabel"
        passed: card.flow.isTestPassed
        english: card.english
        question: card.english ? "See the explanation up top?" : "看到顶部的解释了吗?"
    }
}

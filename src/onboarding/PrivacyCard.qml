// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// What is read, and who sees the notes.
CardFrame {
    id: card

    centered: true
    title: card.english ? "We protect your privacy" : "我们保护你的隐私"

    onProceeded: card.flow.advance()

    PrivacyPoint {
        width: parent.width
        symbol: "text.cursor"
        text: card.english ? "Reads your selection only when you double-tap Option"
                           : "只在你双击 Option 时读取选中文字"
    }
    PrivacyPoint {
        width: parent.width
        symbol: "lock"
        text: card.english ? "Your notes are visible only to you" : "笔记只有你自己能看到"
    }
}

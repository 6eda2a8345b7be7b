// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// In place of the list when a search finds nothing.
EmptyState {
    id: state

    required property bool english

    objectName: "nothingFound"
    icon: "search"
    title: state.english ? "Nothing found" : "没有找到"
    text: state.english ? "Try fewer or different words. The search covers texts, explanations and follow-ups."
                        : "试试更少或不同的词。每个词都会在原文、解释和追问里查找。"
}

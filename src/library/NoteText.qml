// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Text of a note, to read, select and copy.
ReadingText {
    id: words

    property string marked: "" ///< words of a search

    island: false
    color: Theme.ink
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink

    readonly property WordMarks marks: WordMarks {
        textDocument: words.textDocument
        words: words.marked
        color: Theme.mark
    }
}

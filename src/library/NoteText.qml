// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Text of a note, to read, select and copy.
ReadingText {
    island: false
    color: Theme.ink
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
}

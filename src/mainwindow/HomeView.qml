// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Insights
import Vellumo.MainWindow

/// The home page in the main window.
HomePage {
    id: view

    required property MainWindowModel main

    overview: view.main.overview
    library: view.main.library
    onNoteChosen: row => view.main.note.openLatest(row)
    onAllNotesAsked: view.main.goToAllNotes()
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Insights
import Vellumo.Library
import Vellumo.MainWindow

/// The home page in the main window.
HomePage {
    id: view

    required property MainWindowModel main

    overview: view.main.overview
    library: view.main.library
    onNoteChosen: row => view.main.note.openLatest(row)
    onDeletionAsked: row => view.main.deletion.deleteNote(view.library.latestIdAt(row))
    onAllNotesAsked: view.main.goToAllNotes()
    onMenuAsked: (card, x, y, row) => {
        menu.openFor(card, x, y, view.library.latestIdAt(row), () => view.main.note.openLatest(row), [])
    }

    readonly property NoteMenu menu: NoteMenu {
        id: menu

        note: view.main.note
        deletion: view.main.deletion
        exporter: view.main.exporter
    }
}

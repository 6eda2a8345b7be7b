// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.MainWindow

/// The page of all notes in the main window.
NotesPage {
    id: view

    required property MainWindowModel main

    library: view.main.library
    deletion: view.main.deletion
    exporter: view.main.exporter
    note: view.main.note
    onNoteChosen: row => view.main.note.openRow(row)

    Connections {
        target: view.main

        function onSearchRequested(): void {
            view.focusSearch()
        }
    }
}

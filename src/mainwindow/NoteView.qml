// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.MainWindow

/// The page of one note in the main window.
NotePage {
    id: view

    required property MainWindowModel main

    note: view.main.note
    marked: view.isFromHome ? "" : view.main.library.query
    isFromHome: view.main.page === MainWindowModel.Home
    onDeletionAsked: {
        const id = view.note.noteId
        view.note.close()
        view.main.deletion.deleteNote(id)
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The rows of the list of notes. Only visible ones are instantiated.
ListView {
    id: view

    required property NotesLibrary library
    required property OpenedNote note ///< may be open beside the list
    required property int sidePadding
    /// The pointer was used last: the current row then has no outline of the keyboard.
    property bool isPointedAt: false

    /// `modifiers` are those of a click, and none for a press by accessibility.
    signal activated(row: int, modifiers: int)
    signal folded(row: int, folded: bool)
    /// The context menu of a row is asked for at this point of its card.
    signal menuAsked(card: Item, x: real, y: real, row: int)

    /// For the keyboard: asks for the menu of the current row, unless it is a heading.
    function askForMenu(): void {
        const row = view.currentItem as NoteRow
        if (row !== null && !row.isHeading)
            row.askForMenu()
    }

    model: view.library.rows
    activeFocusOnTab: true
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true
    clip: true
    reuseItems: true
    cacheBuffer: 200
    currentIndex: -1
    highlightMoveDuration: 0
    highlightResizeDuration: 0
    bottomMargin: Units.space24

    Accessible.role: Accessible.List
    Accessible.focusable: true

    onActiveFocusChanged: {
        if (!activeFocus && Window.active)
            view.isPointedAt = false
    }

    delegate: NoteRow {
        id: row

        width: view.width
        library: view.library
        sidePadding: view.sidePadding
        hasKeyboard: view.activeFocus && !view.isPointedAt && row.ListView.isCurrentItem
        isOpen: view.note.isOpen && view.library.idAt(row.index) === view.note.noteId
        onAction: modifiers => view.activated(row.index, modifiers)
        onFolded: view.folded(row.index, !row.isFolded)
        onMenuAsked: (card, x, y) => view.menuAsked(card, x, y, row.index)
    }
}

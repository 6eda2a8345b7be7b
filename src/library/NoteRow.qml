// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// A row of the list of notes: a heading, or a note.
Item {
    id: row

    required property NotesLibrary library
    required property int sidePadding
    required property bool hasKeyboard
    required property bool isOpen

    // of the model
    required property int index
    required property bool isHeading
    required property string title
    required property string detail
    required property string when
    required property string origin
    required property string spoken
    required property int followUps
    required property bool isSelected
    required property bool isFolded

    signal action(modifiers: int)
    signal folded
    signal menuAsked(card: Item, x: real, y: real)

    height: row.isHeading ? heading.height : Units.noteRow + Units.space8

    function marked(text: string): string {
        return row.library.query.length > 0 ? row.library.marked(text, Theme.markInk) : ""
    }

    function askForMenu(): void {
        card.askForMenu()
    }

    NotesHeader {
        id: heading

        x: row.sidePadding
        width: row.width - 2 * row.sidePadding
        height: Math.round(Units.type15 * Units.cardLine) + Units.space8
            + (row.index > 0 ? Units.space20 : Units.space4)
        visible: row.isHeading
        title: row.title
        detail: row.detail
        count: row.followUps
        isFolded: row.isFolded
        hasKeyboard: row.hasKeyboard
        onAction: row.folded()
        Accessible.ignored: !visible
    }
    NoteCard {
        id: card

        x: row.sidePadding
        width: row.width - 2 * row.sidePadding
        visible: !row.isHeading
        title: row.title
        detail: row.detail
        titleMarkup: row.marked(row.title)
        detailMarkup: row.marked(row.detail)
        when: row.when
        origin: row.origin
        spoken: row.spoken
        followUps: row.followUps
        hasKeyboard: row.hasKeyboard
        isOpen: row.isOpen
        selecting: row.library.selection.isActive
        selected: row.isSelected
        Accessible.ignored: !visible
        onAction: modifiers => row.action(modifiers)
        onMenuAsked: (x, y) => row.menuAsked(card, x, y)
    }
}

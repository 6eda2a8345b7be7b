// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The found notes below their headings. Only visible rows are instantiated.
FocusScope {
    id: list

    required property NotesLibrary library
    required property NoteDeletion deletion
    required property NotesExporter exporter
    required property bool english
    required property int sidePadding
    required property OpenedNote note ///< may be open beside the list

    readonly property NoteSelection selection: list.library.selection

    signal noteChosen(row: int)
    property real keptY: 0
    property string keptId: ""

    function toTop(): void {
        rows.positionViewAtBeginning()
        rows.currentIndex = -1
    }
    function step(by: int): void {
        const last = rows.count - 1
        let next = Math.max(0, Math.min(last, rows.currentIndex + by))
        // skips headings of unfolded groups, in the direction of the step or back
        const direction = by < 0 ? -1 : 1
        if (list.isPassed(next))
            next = next + direction >= 0 && next + direction <= last ? next + direction : next + 1
        if (next <= last && !list.isPassed(next))
            rows.currentIndex = next
        if (list.note.isOpen && !list.selection.isActive)
            list.noteChosen(rows.currentIndex)
        // shows the first heading with the first note
        if (rows.currentIndex <= 1)
            rows.positionViewAtBeginning()
    }

    function isPassed(row: int): bool {
        return list.library.isHeading(row) && !list.library.isFolded(row)
    }
    /// Folds the group of a row, whose heading becomes the current row; or unfolds it, and moves to
    /// its first note.
    function fold(row: int, folded: bool): void {
        const heading = list.library.headingOf(row)
        if (heading < 0 || list.library.isFolded(heading) === folded)
            return
        list.selection.dropAnchor()
        list.library.setFolded(heading, folded)
        if (rows.activeFocus)
            rows.currentIndex = folded ? heading : heading + 1
    }

    /// Moves the current row; with Shift, extends the selection to it.
    function move(by: int, modifiers: int): void {
        if (!(modifiers & Qt.ShiftModifier)) {
            list.selection.dropAnchor()
            list.step(by)
            return
        }
        list.selection.extendTo(rows.currentIndex)
        list.step(by)
        list.selection.extendTo(rows.currentIndex)
    }
    function enter(row: int): void {
        if (list.library.isFolded(row))
            list.fold(row, false)
        else
            list.noteChosen(row)
    }
    function activate(row: int, modifiers: int): void {
        const selects = (modifiers & (Qt.ShiftModifier | Qt.ControlModifier)) !== 0
        // the keyboard continues from here
        rows.currentIndex = row
        rows.forceActiveFocus(Qt.MouseFocusReason)
        if (!selects && !list.selection.isActive)
            list.noteChosen(row)
        else if (modifiers & Qt.ShiftModifier)
            list.selection.extendTo(row)
        else
            list.selection.toggle(row)
        rows.isPointedAt = true // last, since the list is hidden for a moment when a note opens
    }

    function openMenu(card: Item, x: real, y: real, row: int): void {
        menu.openFor(card, x, y, list.library.idAt(row), () => list.noteChosen(row), [{
            name: "menuSelect", text: list.english ? "Select" : "选择",
            run: () => list.activate(row, Qt.ControlModifier)
        }])
    }

    /// Deletes the selected notes, or else the current one, and moves to its neighbour.
    function remove(): void {
        if (list.selection.isActive) {
            list.deletion.deleteSelected()
            return
        }
        const id = list.library.idAt(rows.currentIndex)
        list.step(1)
        if (list.library.idAt(rows.currentIndex) === id)
            list.step(-1)
        list.deletion.deleteNote(id)
    }

    readonly property NoteMenu menu: NoteMenu {
        id: menu
        note: list.note
        deletion: list.deletion
        exporter: list.exporter
    }

    Connections {
        target: list.note

        function onOpened(): void {
            rows.currentIndex = list.library.rowOf(list.note.noteId)
            rows.positionViewAtIndex(rows.currentIndex, ListView.Contain)
        }
    }
    Connections {
        target: list.library

        function onRowsAboutToRefresh(): void {
            list.keptY = rows.contentY
            list.keptId = list.library.idAt(rows.currentIndex)
        }
        function onRowsRefreshed(): void {
            rows.currentIndex = list.library.rowOf(list.keptId)
            rows.contentY = Math.min(list.keptY, Math.max(0, rows.contentHeight - rows.height))
        }
    }

    NoteRowsView {
        id: rows

        objectName: "rows"
        anchors.fill: parent
        focus: true
        library: list.library
        note: list.note
        sidePadding: list.sidePadding
        Accessible.name: list.english ? "Notes" : "笔记"

        onActivated: (row, modifiers) => list.activate(row, modifiers)
        onFolded: (row, folded) => list.fold(row, folded)
        onMenuAsked: (card, x, y, row) => list.openMenu(card, x, y, row)
        onActiveFocusChanged: {
            if (activeFocus && currentIndex < 0)
                list.step(1)
        }
        Keys.onDeletePressed: list.remove()
        Keys.onMenuPressed: rows.askForMenu()
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(rows.height / (Units.noteRow + Units.space8)) - 1)
            const steps = {
                [Qt.Key_Up]: -1, [Qt.Key_Down]: 1,
                [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page,
                [Qt.Key_Home]: -rows.count, [Qt.Key_End]: rows.count
            }
            // as on the page of the note beside the list
            const stepsBeside = list.note.isOpen ? { [Qt.Key_K]: -1, [Qt.Key_J]: 1 } : {}
            event.accepted = true
            rows.isPointedAt = false
            if (event.key in steps)
                list.move(steps[event.key], event.modifiers)
            else if (event.key in stepsBeside)
                list.step(stepsBeside[event.key])
            else if (event.key === Qt.Key_A && event.modifiers === Qt.ControlModifier)
                list.selection.selectAll()
            else if (event.key === Qt.Key_Space
                     && (list.selection.isActive || event.modifiers & Qt.ControlModifier))
                list.selection.toggle(rows.currentIndex)
            else if (event.key === Qt.Key_Left || event.key === Qt.Key_Right)
                list.fold(rows.currentIndex, event.key === Qt.Key_Left)
            else if ([Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key))
                list.enter(rows.currentIndex)
            else
                event.accepted = false
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        flickable: rows
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

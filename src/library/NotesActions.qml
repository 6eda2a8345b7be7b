// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The buttons to sort and to select notes, and to delete or export them.
Flow {
    id: actions

    required property NotesLibrary library
    required property NoteDeletion deletion
    required property NotesExporter exporter
    required property bool english

    readonly property NoteSelection selection: actions.library.selection
    /// The width of all buttons in one line.
    readonly property int oneLine: select.implicitWidth + save.implicitWidth + actions.spacing
        + (actions.selection.isActive
            ? all.implicitWidth + remove.implicitWidth + 2 * actions.spacing
            : sort.implicitWidth + actions.spacing)

    /// Emitted when the button has turned selection mode on.
    signal selecting

    spacing: Units.space4

    function nameOf(order: int): string {
        switch (order) {
        case NoteRowsModel.OldestFirst:
            return actions.english ? "Oldest first" : "最早在前"
        case NoteRowsModel.MostFollowUps:
            return actions.english ? "Most follow-ups first" : "追问最多在前"
        default:
            return actions.english ? "Newest first" : "最新在前"
        }
    }
    function orderEntry(order: int, name: string): var {
        return {
            name: name, text: actions.nameOf(order), checked: actions.library.order === order,
            run: () => actions.library.order = order
        }
    }

    readonly property MenuOpener opener: MenuOpener { id: opener }

    TextButton {
        id: sort

        objectName: "sort"
        visible: !actions.selection.isActive
        quiet: true
        icon: "sort"
        text: actions.nameOf(actions.library.order)
        onClicked: opener.open(sort, 0, sort.height, [
            actions.orderEntry(NoteRowsModel.NewestFirst, "newestFirst"),
            actions.orderEntry(NoteRowsModel.OldestFirst, "oldestFirst"),
            actions.orderEntry(NoteRowsModel.MostFollowUps, "mostFollowUps")
        ])
        Accessible.role: Accessible.ButtonMenu
    }
    TextButton {
        id: all

        objectName: "selectAll"
        visible: actions.selection.isActive
        quiet: true
        text: actions.english ? "Select all" : "全选"
        onClicked: actions.selection.selectAll()
        onVisibleChanged: {
            if (!visible && activeFocus)
                select.forceActiveFocus(Qt.OtherFocusReason)
        }
    }
    TextButton {
        id: remove

        objectName: "deleteSelected"
        visible: actions.selection.isActive
        quiet: true
        icon: "delete"
        text: actions.english ? "Delete" : "删除"
        enabled: actions.selection.count > 0
        onClicked: {
            select.forceActiveFocus(Qt.OtherFocusReason)
            actions.deletion.deleteSelected()
        }
    }
    TextButton {
        id: select

        objectName: "select"
        quiet: true
        icon: actions.selection.isActive ? "cross" : "select"
        text: actions.selection.isActive ? (actions.english ? "Done" : "退出选择")
                                         : (actions.english ? "Select" : "选择")
        onClicked: {
            actions.selection.isActive = !actions.selection.isActive
            if (actions.selection.isActive)
                actions.selecting()
        }
    }
    TextButton {
        id: save

        objectName: "export"
        quiet: true
        icon: "export"
        text: actions.english ? "Export…" : "导出…"
        enabled: actions.exporter.state !== NotesExporter.Writing
        onClicked: actions.exporter.isOpen = true
    }
}

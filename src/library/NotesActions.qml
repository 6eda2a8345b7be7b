// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The buttons to select notes, and to delete or export them.
Flow {
    id: actions

    required property NoteSelection selection
    required property NoteDeletion deletion
    required property NotesExporter exporter
    required property bool english

    /// The width of all buttons in one line.
    readonly property int oneLine: select.implicitWidth + save.implicitWidth + actions.spacing
        + (actions.selection.isActive
            ? all.implicitWidth + remove.implicitWidth + 2 * actions.spacing : 0)

    /// Emitted when the button has turned selection mode on.
    signal selecting

    spacing: Units.space4

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

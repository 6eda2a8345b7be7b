// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The buttons to select notes and to export them.
Flow {
    id: actions

    required property NoteSelection selection
    required property NotesExporter exporter
    required property bool english

    /// The width of all buttons in one line.
    readonly property int oneLine: all.implicitWidth * (all.visible ? 1 : 0) + select.implicitWidth
        + save.implicitWidth + (all.visible ? 2 : 1) * actions.spacing

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

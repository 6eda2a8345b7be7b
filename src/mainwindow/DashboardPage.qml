// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// A page of the dashboard. It is loaded when it is first shown and hidden while a note is open.
LoadedView {
    id: view

    required property int page
    property bool staysBeside: false ///< visible although a note is open

    visible: view.wanted && (!view.main.note.isOpen || view.staysBeside)
    focus: view.visible
    kept: true
    wanted: view.main.page === view.page
}

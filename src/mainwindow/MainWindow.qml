// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// The main window: the sign-in view or the dashboard.
Window {
    id: window

    required property MainWindowModel main
    required property BilingualText texts

    width: Units.windowWidth
    height: Units.windowHeight
    minimumWidth: Units.minWindowWidth
    minimumHeight: Units.minWindowHeight
    color: Theme.ground
    title: "vellumo"

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }
    RootView {
        anchors.fill: parent
        main: window.main
        texts: window.texts
    }
}

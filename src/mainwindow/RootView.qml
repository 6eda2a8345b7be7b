// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// One of the window's two faces, whichever the user's session asks for.
FocusScope {
    id: root

    required property MainWindowModel main
    required property BilingualText texts

    focus: true

    LoadedView {
        anchors.fill: parent
        focus: wanted
        file: Qt.resolvedUrl("HomeDashboardView.qml")
        wanted: root.main.showsDashboard
        main: root.main
        texts: root.texts
    }
    LoadedView {
        anchors.fill: parent
        focus: wanted
        file: Qt.resolvedUrl("SignInView.qml")
        wanted: !root.main.showsDashboard
        main: root.main
        texts: root.texts
    }
}

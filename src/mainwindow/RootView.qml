// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// Shows the sign-in view or the dashboard, depending on the session.
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

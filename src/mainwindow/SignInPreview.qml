// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Account
import Vellumo.MainWindow
import Vellumo.Ui

/// The sign-in view regardless of the session, for development.
Window {
    id: window

    required property AuthService auth
    required property BilingualText texts

    width: Units.windowWidth
    height: Units.windowHeight
    color: Theme.ground
    title: "vellumo"

    AuthView {
        anchors.fill: parent
        auth: window.auth
        texts: window.texts
    }
}

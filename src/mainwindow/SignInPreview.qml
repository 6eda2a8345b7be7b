// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Account
import Vellumo.MainWindow
import Vellumo.Ui

/// For developers: the sign-in view, also for a signed-in user.
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

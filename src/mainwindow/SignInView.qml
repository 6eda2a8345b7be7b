// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow

/// The sign-in view in the main window.
AuthView {
    id: view

    required property MainWindowModel main

    auth: view.main.auth
    onSignInAsked: view.main.signIn()
    onWithoutAccountAsked: view.main.useWithoutAccount()
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.MainWindow

/// The page "This computer" in the main window.
ComputerPage {
    id: view

    required property MainWindowModel main

    computer: view.main.computer
    syncsNotes: view.main.account.syncs
    syncTime: view.syncsNotes ? view.main.sync.problemTime : new Date(NaN)
    syncProblem: view.main.account.advice

    AboutSection {
        width: parent.width
        main: view.main
        english: view.english
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.MainWindow

/// The export sheet over the main window.
ExportSheet {
    id: view

    required property MainWindowModel main

    exporter: view.main.exporter
    library: view.main.library
}

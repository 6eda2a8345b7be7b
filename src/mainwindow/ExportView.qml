// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.MainWindow

/// The questions before an export, above the main window's page.
ExportSheet {
    id: view

    required property MainWindowModel main

    exporter: view.main.exporter
    library: view.main.library
}

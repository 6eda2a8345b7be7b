// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// A view that is loaded when it is first wanted, and optionally kept.
FocusScope {
    id: view

    required property MainWindowModel main
    required property BilingualText texts
    required property url file
    required property bool wanted
    property bool kept: false

    onWantedChanged: view.follow()
    Component.onCompleted: view.follow()

    function follow(): void {
        if (view.wanted && loader.status === Loader.Null)
            loader.setSource(view.file, { main: view.main, texts: view.texts, focus: true })
        else if (!view.wanted && !view.kept)
            loader.source = ""
    }

    Loader {
        id: loader

        anchors.fill: parent
        focus: true
    }
}

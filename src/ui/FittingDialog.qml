// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A small window of one width that is always as high as what it says.
Window {
    id: dialog

    required property int fittingHeight

    width: Units.dialogWidth
    minimumWidth: width
    maximumWidth: width
    flags: Qt.Dialog | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    color: Theme.ground
    title: "vellumo"

    onFittingHeightChanged: dialog.fit()
    Component.onCompleted: dialog.fit()

    /// The limits go first: a window manager holds a window to those that it knows.
    function fit(): void {
        dialog.minimumHeight = Math.min(dialog.height, dialog.fittingHeight)
        dialog.maximumHeight = dialog.fittingHeight
        dialog.height = dialog.fittingHeight
        dialog.minimumHeight = dialog.fittingHeight
    }
}

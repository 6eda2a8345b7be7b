// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The finger that shows where to click.
Item {
    Text {
        anchors.fill: parent
        text: "👆"
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        font.family: "Noto Color Emoji" // the reading fonts would draw an outline
        font.pixelSize: Units.demoFinger
        Accessible.ignored: true
    }
}

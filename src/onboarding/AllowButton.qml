// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A button that stays, grey, when its work is done.
ButtonArea {
    id: button

    required property string text

    accessibleName: button.text
    opacity: 1
    implicitHeight: Units.button
    implicitWidth: Math.max(Units.scaled(112), Math.ceil(label.implicitWidth) + 2 * Units.space20)

    Rectangle {
        anchors.fill: parent
        radius: Units.radius10
        color: !button.enabled ? Theme.doneFill
             : button.hovered || button.pressed ? Theme.inkHovered : Theme.ink

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }
    }
    Text {
        id: label

        anchors.fill: parent
        text: button.text
        textFormat: Text.PlainText
        color: button.enabled ? Theme.ground : Theme.doneText
        font.pixelSize: Units.type13
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
    FocusRing {
        shown: button.activeFocus
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A round button with a picture, for the dark island.
ButtonArea {
    id: button

    required property string icon ///< of LineIcon
    property int diameter: Units.closeButton
    property int iconSize: Units.closeIcon
    property color iconColor: Theme.islandBody
    property color ground: Theme.islandControl

    implicitWidth: button.diameter
    implicitHeight: button.diameter

    Rectangle {
        anchors.fill: parent
        radius: button.diameter / 2
        color: button.pressed ? Theme.islandControlPressed
             : button.hovered ? Theme.islandControlHovered : button.ground

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }
    }
    LineIcon {
        anchors.centerIn: parent
        width: button.iconSize
        height: width
        name: button.icon
        color: button.iconColor
    }
    FocusRing {
        shown: button.activeFocus
        controlRadius: button.diameter / 2
    }
}

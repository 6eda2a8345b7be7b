// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// A round button with a picture, for the dark island.
ButtonArea {
    id: button

    required property url iconSource
    property int diameter: Units.closeButton
    property int iconSize: 10
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
    Image {
        anchors.centerIn: parent
        source: button.iconSource
        sourceSize.width: button.iconSize
        sourceSize.height: button.iconSize
    }
    FocusRing {
        shown: button.activeFocus
        controlRadius: button.diameter / 2
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

/// A round button with a picture, for the dark island.
T.AbstractButton {
    id: button

    required property string accessibleName
    required property url iconSource
    property int diameter: Units.closeButton
    property int iconSize: 10
    property color ground: Theme.islandControl

    implicitWidth: button.diameter
    implicitHeight: button.diameter
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    opacity: button.enabled ? 1 : 0.45

    Accessible.role: Accessible.Button
    Accessible.name: button.accessibleName

    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    background: Rectangle {
        radius: button.diameter / 2
        color: button.pressed ? Theme.islandControlPressed
             : button.hovered ? Theme.islandControlHovered : button.ground

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }

        FocusRing {
            shown: button.visualFocus
            controlRadius: button.diameter / 2
        }
    }
    contentItem: Item {
        Image {
            anchors.centerIn: parent
            source: button.iconSource
            sourceSize.width: button.iconSize
            sourceSize.height: button.iconSize
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}

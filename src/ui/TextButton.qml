// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Templates as T

/// A button with a word. Primary: ink on ground; otherwise a soft fill. On the island it takes the
/// island's colours whatever the desktop's.
T.AbstractButton {
    id: button

    property bool primary: false
    property bool island: false
    property int minimumWidth: 0

    readonly property color restColor: button.island
        ? (button.primary ? Theme.islandText : Theme.islandControl)
        : (button.primary ? Theme.ink : Theme.softFill)
    readonly property color hoverColor: button.island
        ? (button.primary ? Theme.islandBody : Theme.islandControlHovered)
        : (button.primary ? Theme.inkHovered : Theme.softFillHovered)
    readonly property color textColor: button.island
        ? (button.primary ? Theme.islandGround : Theme.islandText)
        : (button.primary ? Theme.ground : Theme.ink)

    implicitHeight: button.island ? Units.scaled(32) : Units.button
    implicitWidth: Math.max(button.minimumWidth, button.implicitContentWidth + 2 * Units.space20)
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: button.enabled ? 1 : 0.45

    Accessible.role: Accessible.Button
    Accessible.name: button.text

    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    background: Rectangle {
        radius: button.island ? height / 2 : Units.radius10
        color: button.hovered || button.pressed ? button.hoverColor : button.restColor
        opacity: button.pressed ? 0.85 : 1

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }

        FocusRing {
            shown: button.visualFocus
            controlRadius: parent.radius
        }
    }
    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        color: button.textColor
        font.pixelSize: Units.type13
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}

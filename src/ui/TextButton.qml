// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// A button with a word. Primary: ink on ground; otherwise a soft fill. On the island it takes the
/// island's colours whatever the desktop's.
ButtonArea {
    id: button

    property string text
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
    readonly property real cornerRadius: button.island ? button.height / 2 : Units.radius10

    accessibleName: button.text
    implicitHeight: button.island ? Units.scaled(32) : Units.button
    implicitWidth: Math.max(button.minimumWidth, label.implicitWidth + 2 * Units.space20)

    Rectangle {
        anchors.fill: parent
        radius: button.cornerRadius
        color: button.hovered || button.pressed ? button.hoverColor : button.restColor
        opacity: button.pressed ? 0.85 : 1

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }
    }
    Text {
        id: label

        anchors.fill: parent
        text: button.text
        textFormat: Text.PlainText
        color: button.textColor
        font.pixelSize: Units.type13
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    FocusRing {
        shown: button.activeFocus
        controlRadius: button.cornerRadius
    }
}

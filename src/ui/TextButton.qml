// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A button with a word, and a picture before it. Primary: ink on ground; quiet: no
/// ground of its own until it is hovered; otherwise a soft fill. On the island it takes the island's
/// colours whatever the desktop's.
ButtonArea {
    id: button

    property string text
    property string icon: "" ///< of LineIcon
    property bool iconHasColors: false ///< and keeps them
    property bool primary: false
    property bool quiet: false
    property bool large: false
    property bool island: false
    property int minimumWidth: 0

    readonly property color restColor: button.quiet ? "transparent"
        : button.island ? (button.primary ? Theme.islandText : Theme.islandControl)
                        : (button.primary ? Theme.ink : Theme.softFill)
    readonly property color hoverColor: button.island
        ? (button.primary ? Theme.islandBody : Theme.islandControlHovered)
        : (button.primary ? Theme.inkHovered : Theme.softFillHovered)
    readonly property color textColor: button.island
        ? (button.primary ? Theme.islandGround
                          : button.quiet && !button.hovered ? Theme.islandSecondText
                                                            : Theme.islandText)
        : (button.primary ? Theme.ground
                          : button.quiet && !button.hovered ? Theme.secondInk : Theme.ink)
    readonly property real cornerRadius: button.island ? button.height / 2 : Units.radius10
    readonly property int sidePadding: button.quiet ? Units.space12 : Units.space20
    readonly property int ahead: mark.visible ? mark.width + Units.space8 : 0

    accessibleName: button.text
    implicitHeight: button.island ? Units.scaled(32)
                  : button.large ? Units.primaryButton : Units.button
    implicitWidth: Math.max(button.minimumWidth,
                            Math.ceil(label.implicitWidth) + button.ahead + 2 * button.sidePadding)

    Rectangle {
        anchors.fill: parent
        radius: button.cornerRadius
        color: button.hovered || button.pressed ? button.hoverColor : button.restColor
        opacity: button.pressed ? 0.85 : 1

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }
    }
    Item {
        id: line

        anchors.centerIn: parent
        width: Math.min(Math.ceil(label.implicitWidth) + button.ahead,
                        button.width - 2 * Units.space8)
        height: parent.height

        LineIcon {
            id: mark

            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            visible: button.icon.length > 0
            width: Units.icon
            height: width
            name: button.icon
            color: button.iconHasColors ? "transparent" : button.textColor
        }
        Text {
            id: label

            anchors.left: parent.left
            anchors.leftMargin: button.ahead
            anchors.right: parent.right
            height: parent.height
            text: button.text
            textFormat: Text.PlainText
            color: button.textColor
            font.pixelSize: button.large ? Units.type15 : Units.type13
            font.weight: button.quiet ? Font.Medium : Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            Accessible.ignored: true

            Binding {
                target: label
                property: "font.family"
                value: Units.chineseFamily
                when: Units.hasChineseQuotes(label.text)
            }
        }
    }
    FocusRing {
        shown: button.activeFocus
        controlRadius: button.cornerRadius
    }
}

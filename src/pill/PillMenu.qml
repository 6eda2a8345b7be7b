// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Pill
import Vellumo.Ui

/// What the pill offers besides its list.
Column {
    id: menu

    required property NotesPillModel pill
    required property BilingualText texts

    width: Units.scaled(200) - 2 * (Units.space12 - Units.space2)

    Accessible.role: Accessible.PopupMenu
    Accessible.name: menu.texts.english ? "Menu" : "菜单"

    component Entry: Item {
        id: entry

        required property string icon
        required property string text

        signal chosen

        width: menu.width
        height: Units.scaled(36)

        Accessible.role: Accessible.MenuItem
        Accessible.name: entry.text
        Accessible.onPressAction: entry.chosen()

        Rectangle {
            anchors.fill: parent
            radius: Units.radius10
            color: hover.hovered ? Theme.islandControlHovered : "transparent"
        }
        LineIcon {
            id: mark

            anchors.left: parent.left
            anchors.leftMargin: Units.space12
            anchors.verticalCenter: parent.verticalCenter
            width: Units.iconSmall
            height: width
            name: entry.icon
            color: Theme.islandSecondText
        }
        TextLine {
            anchors.left: mark.right
            anchors.leftMargin: Units.space8
            anchors.right: parent.right
            anchors.rightMargin: Units.space8
            anchors.verticalCenter: parent.verticalCenter
            text: entry.text
            color: Theme.islandText
            size: Units.type13
        }
        HoverHandler {
            id: hover
        }
        TapHandler {
            onTapped: entry.chosen()
        }
    }

    Entry {
        objectName: "menuOpen"
        icon: "open"
        text: menu.texts.english ? "Open vellumo" : "打开 vellumo"
        onChosen: menu.pill.windowRequested()
    }
    Entry {
        objectName: "menuHide"
        icon: "eye-off"
        text: menu.texts.english ? "Hide “Notes”" : "隐藏“Notes”"
        onChosen: menu.pill.hidingRequested()
    }
    Entry {
        objectName: "menuQuit"
        icon: "quit"
        text: menu.texts.english ? "Quit vellumo" : "退出 vellumo"
        onChosen: menu.pill.quitRequested()
    }
}

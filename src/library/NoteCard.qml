// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A note in a list: its text and meaning, when and where it was read, and its number of follow-ups.
Item {
    id: card

    required property string title
    required property string detail
    required property string when
    required property string origin
    required property string spoken
    required property int followUps
    /// The two with the words of a search marked, as markup; empty without a search.
    property string titleMarkup: ""
    property string detailMarkup: ""
    property bool hasKeyboard: false
    property bool isOpen: false ///< beside the list
    /// Whether selection mode is on, and whether this note is selected.
    property bool selecting: false
    property bool selected: false

    readonly property int sideWidth: Math.round(card.width * 0.28)

    /// `modifiers` are those of a click, and none for a press by accessibility.
    signal action(modifiers: int)
    /// The context menu is asked for at this point of the card.
    signal menuAsked(x: real, y: real)

    /// For the keyboard: asks for the menu below the text.
    function askForMenu(): void {
        card.menuAsked(Units.space32, card.height - Units.space12)
    }

    implicitHeight: Units.noteRow

    Accessible.role: Accessible.ListItem
    Accessible.name: card.title
    Accessible.description: card.spoken
    Accessible.focusable: true
    Accessible.checkable: card.selecting
    Accessible.checked: card.selected
    Accessible.onPressAction: card.action(Qt.NoModifier)

    Card {
        anchors.fill: parent
        color: card.isOpen || card.selected ? Theme.accentSoft
             : pointer.containsMouse ? Theme.surfaceHovered : Theme.surface
        // never beside the outline of the keyboard, which has the same colour
        border.color: card.selected && !card.hasKeyboard ? Theme.accent
                                    : pointer.containsMouse ? Theme.thumb : Theme.hairline
    }
    Rectangle {
        id: check

        anchors.left: parent.left
        anchors.leftMargin: Units.space16
        anchors.verticalCenter: parent.verticalCenter
        width: Units.scaled(20)
        height: width
        visible: card.selecting
        radius: width / 2
        color: card.selected ? Theme.accent : "transparent"
        border.width: card.selected ? 0 : Units.focusRing
        border.color: Theme.fieldEdge

        LineIcon {
            anchors.centerIn: parent
            width: Units.scaled(14)
            height: width
            visible: card.selected
            name: "check"
            color: Theme.accentText
        }
    }
    FocusRing {
        shown: card.hasKeyboard
        controlRadius: Units.radius14
    }
    Column {
        anchors.left: parent.left
        anchors.leftMargin: Units.space16 + (card.selecting ? check.width + Units.space16 : 0)
        anchors.right: side.left
        anchors.rightMargin: Units.space16
        anchors.verticalCenter: parent.verticalCenter
        spacing: Units.space4

        TextLine {
            width: parent.width
            text: card.title
            markup: card.titleMarkup
            color: Theme.ink
            size: Units.type14
            weight: Font.DemiBold
        }
        TextLine {
            width: parent.width
            text: card.detail
            markup: card.detailMarkup
            color: Theme.secondInk
            size: Units.type13
        }
    }
    Column {
        id: side

        anchors.right: parent.right
        anchors.rightMargin: Units.space16
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(card.sideWidth, Math.max(upper.implicitWidth, lower.fullWidth))
        spacing: Units.space4

        TextLine {
            id: upper

            width: parent.width
            text: card.when
            alignment: Text.AlignRight
            color: Theme.secondInk
            size: Units.type12
        }
        Item {
            id: lower

            readonly property int ahead: mark.visible ? mark.width + Units.space4 : 0
            readonly property int fullWidth: words.implicitWidth + lower.ahead

            width: parent.width
            height: words.height
            visible: words.text.length > 0

            LineIcon {
                id: mark

                anchors.right: words.left
                anchors.rightMargin: Units.space4
                anchors.verticalCenter: parent.verticalCenter
                visible: card.followUps > 0
                width: Units.type12
                height: width
                name: "asked"
                color: Theme.secondInk
            }
            TextLine {
                id: words

                anchors.right: parent.right
                width: Math.min(implicitWidth, parent.width - lower.ahead)
                text: card.origin
                alignment: Text.AlignRight
                color: Theme.secondInk
                size: Units.type12
            }
        }
    }
    MouseArea {
        id: pointer

        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                card.action(mouse.modifiers)
            else
                card.menuAsked(mouse.x, mouse.y)
        }
    }
}

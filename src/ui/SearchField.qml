// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A field to search with: every change counts at once, Escape empties it.
FocusScope {
    id: field

    required property string placeholder
    required property string clearName
    property alias text: input.text

    readonly property bool isEmpty: input.text.length === 0 && input.preeditText.length === 0

    implicitHeight: Units.button

    function focusField(): void {
        input.forceActiveFocus(Qt.ShortcutFocusReason)
        input.selectAll()
    }

    Rectangle {
        anchors.fill: parent
        radius: Units.radius10
        color: Theme.surface
        border.width: input.activeFocus ? Units.focusRing : Units.hairline
        border.color: input.activeFocus ? Theme.accent : Theme.fieldEdge
    }
    LineIcon {
        id: glass

        anchors.left: parent.left
        anchors.leftMargin: Units.space12
        anchors.verticalCenter: parent.verticalCenter
        width: Units.iconSmall
        height: width
        name: "search"
        color: Theme.secondInk
    }
    Text {
        anchors.fill: input
        visible: field.isEmpty
        text: field.placeholder
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: Theme.secondInk
        font: input.font
        Accessible.ignored: true
    }
    TextInput {
        id: input

        readonly property UnwatchedClipboard clipboard: UnwatchedClipboard { field: input }

        objectName: "search"
        anchors.left: glass.right
        anchors.leftMargin: Units.space8
        anchors.right: clear.left
        anchors.rightMargin: Units.space4
        height: parent.height
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        verticalAlignment: TextInput.AlignVCenter
        color: Theme.ink
        selectionColor: Theme.selection
        selectedTextColor: Theme.ink
        font.pixelSize: Units.type13

        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder

        Keys.onEscapePressed: event => {
            event.accepted = input.text.length > 0
            input.clear()
        }

        Keys.onMenuPressed: menu.openAtCursor()

        HoverHandler {
            cursorShape: Qt.IBeamCursor
        }
        TextMenu {
            id: menu

            field: input
        }
    }
    ButtonArea {
        id: clear

        anchors.right: parent.right
        anchors.rightMargin: Units.space4
        anchors.verticalCenter: parent.verticalCenter
        width: Units.iconSmall + 2 * Units.space8
        height: width
        visible: !field.isEmpty
        accessibleName: field.clearName
        onClicked: {
            input.clear()
            input.forceActiveFocus()
        }

        LineIcon {
            anchors.centerIn: parent
            width: Units.iconSmall
            height: width
            name: "cross"
            color: clear.hovered ? Theme.ink : Theme.secondInk
        }
        FocusRing {
            shown: clear.activeFocus
            controlRadius: Units.radius6
        }
    }
}

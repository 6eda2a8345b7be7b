// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A line of text to type, with what it is above it and what is to be known of it below. A secret
/// one shows dots until it is asked to show more.
FocusScope {
    id: field

    required property string label
    property alias text: input.text
    property string placeholder: ""
    property string help: ""
    property string error: ""
    property bool readOnly: false
    property bool secret: false
    property string revealName: "" ///< of the button that shows a secret
    property bool isRevealed: false

    signal edited
    signal accepted

    implicitHeight: note.visible ? note.y + note.height : box.y + box.height

    onErrorChanged: announcer.announce(field.error)

    Announcer {
        id: announcer
    }
    Label {
        id: name

        width: parent.width
        text: field.label
        wrapMode: Text.Wrap
        font.pixelSize: Units.type12
        font.weight: Font.Medium
        Accessible.ignored: true
    }
    Rectangle {
        id: box

        anchors.top: name.bottom
        anchors.topMargin: Units.space4
        width: parent.width
        height: Units.button
        radius: Units.radius10
        color: field.readOnly ? Theme.softFill : Theme.surface
        border.width: input.activeFocus ? Units.focusRing : Units.hairline
        border.color: input.activeFocus ? Theme.accent
                    : field.error.length > 0 ? Theme.bad : Theme.fieldEdge

        Text {
            anchors.fill: spoken
            visible: input.text.length === 0 && input.preeditText.length === 0
            text: field.placeholder
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            color: Theme.secondInk
            font: input.font
            Accessible.ignored: true
        }
        // Exposed to accessibility instead of the input, which would reveal what is typed to every
        // client. Shows dots where the field does. (Marked as a password it would lose its name.)
        FocusScope {
            id: spoken

            readonly property string text: input.displayText
            readonly property int cursorPosition: input.cursorPosition

            anchors.left: parent.left
            anchors.leftMargin: Units.space12
            anchors.right: parent.right
            anchors.rightMargin: Units.space4
                + (reveal.visible ? reveal.width + Units.space4 : Units.space12)
            height: parent.height
            focus: true

            Accessible.role: Accessible.EditableText
            Accessible.name: field.label
            Accessible.description: note.text
            Accessible.focusable: true
            Accessible.editable: !field.readOnly
            Accessible.readOnly: field.readOnly

            TextInput {
                id: input

                readonly property UnwatchedClipboard clipboard: UnwatchedClipboard { field: input }

                objectName: field.objectName + "Input"
                anchors.fill: parent
                clip: true
                focus: true
                activeFocusOnTab: true
                selectByMouse: true
                readOnly: field.readOnly
                maximumLength: 4000
                verticalAlignment: TextInput.AlignVCenter
                echoMode: field.secret && !field.isRevealed ? TextInput.Password : TextInput.Normal
                inputMethodHints: field.secret
                    ? Qt.ImhHiddenText | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
                    : Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText
                color: Theme.ink
                selectionColor: Theme.selection
                selectedTextColor: Theme.ink
                font.pixelSize: Units.type13

                Accessible.ignored: true

                onTextEdited: field.edited()
                onAccepted: field.accepted()

                Keys.onMenuPressed: menu.openAtCursor()

                HoverHandler {
                    cursorShape: Qt.IBeamCursor
                }
                TextMenu {
                    id: menu

                    field: input
                }
            }
        }
        ButtonArea {
            id: reveal

            objectName: field.objectName + "Reveal"
            anchors.right: parent.right
            anchors.rightMargin: Units.space4
            anchors.verticalCenter: parent.verticalCenter
            width: Units.iconSmall + 2 * Units.space8
            height: width
            visible: field.secret && input.text.length > 0
            accessibleName: field.revealName
            Accessible.checkable: true
            Accessible.checked: field.isRevealed
            onClicked: field.isRevealed = !field.isRevealed

            LineIcon {
                anchors.centerIn: parent
                width: Units.icon
                height: width
                name: field.isRevealed ? "eye-off" : "eye"
                color: reveal.hovered ? Theme.ink : Theme.secondInk
            }
            FocusRing {
                shown: reveal.activeFocus
                controlRadius: Units.radius6
            }
        }
    }
    Label {
        id: note

        objectName: field.objectName + "Note"
        anchors.top: box.bottom
        anchors.topMargin: Units.space4
        width: parent.width
        visible: text.length > 0
        text: field.error.length > 0 ? field.error : field.help
        wrapMode: Text.Wrap
        color: field.error.length > 0 ? Theme.bad : Theme.secondInk
        font.pixelSize: Units.type12
        lineFactor: Units.readingLine
    }
}

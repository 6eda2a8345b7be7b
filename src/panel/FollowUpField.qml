// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// The one-line field for a follow-up question. Enter and the arrow submit; a draft that is not
/// taken stays.
FocusScope {
    id: field

    required property ResultPanelModel view
    required property BilingualText texts

    readonly property bool isTooLong: field.view.isTooLong(input.text)
    readonly property bool canSubmit: !field.view.awaitsAnswer && !field.isTooLong
                                      && input.text.trim().length > 0
    readonly property Item input: input

    height: Units.followUpField

    function clear(): void {
        input.clear()
    }
    function focusField(): void {
        input.forceActiveFocus(Qt.OtherFocusReason)
    }
    function type(text: string): void {
        field.focusField()
        input.insert(input.cursorPosition, text)
    }
    function submit(): void {
        if (field.view.submitFollowUp(input.text))
            input.clear()
        else
            field.report()
    }
    function report(): void {
        field.view.hasUnsentText = input.text.trim().length > 0 || input.preeditText.length > 0
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.islandField
        border.width: input.activeFocus ? Units.focusRing : Units.hairline
        border.color: input.activeFocus ? Theme.islandAccent : Theme.islandFieldEdge
    }
    Text {
        id: placeholder

        anchors.left: input.left
        width: input.width - (way.visible ? way.implicitWidth + Units.space16 : 0)
        height: input.height
        visible: input.text.length === 0 && input.preeditText.length === 0
        text: "Ask a follow-up…" // the same in every language
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: Theme.islandSecondText
        font: input.font
    }
    // How to get the keyboard, since typing goes to the application behind until then. The shorter
    // form where the longer one does not fit beside the placeholder, which gives way to it.
    Text {
        id: way

        readonly property bool fits: holding.advanceWidth + placeholder.implicitWidth
            + Units.space16 < input.width

        objectName: "wayToType"
        anchors.right: input.right
        height: parent.height
        visible: placeholder.visible && !field.Window.active
        text: field.view.offersHolding && way.fits ? holding.text
            : field.texts.english ? "Click to type" : "点击输入"
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        color: Theme.islandSecondText
        font.pixelSize: Units.type11

        Accessible.ignored: true

        TextMetrics {
            id: holding

            font: way.font
            text: field.texts.english ? "Click to type, or hold the second tap"
                                      : "点击输入，或第二下按住不放"
        }
    }
    TextInput {
        id: input

        readonly property UnwatchedClipboard clipboard: UnwatchedClipboard { field: input }

        objectName: "followUpInput"
        anchors.left: parent.left
        anchors.leftMargin: Units.space16 - Units.space2
        anchors.right: send.left
        anchors.rightMargin: Units.space8
        height: parent.height
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        verticalAlignment: TextInput.AlignVCenter
        maximumLength: 40000 // beyond what can be sent, so that nothing is cut unnoticed
        color: Theme.islandText
        selectionColor: Theme.islandSelection
        selectedTextColor: Theme.islandText
        font.pixelSize: Units.type13

        Accessible.role: Accessible.EditableText
        Accessible.name: field.texts.english ? "Ask a follow-up" : "继续追问"

        onAccepted: field.submit()
        onTextChanged: field.report()
        onPreeditTextChanged: field.report()

        Keys.onMenuPressed: menu.openAtCursor()

        HoverHandler {
            cursorShape: Qt.IBeamCursor
        }
        TextMenu {
            id: menu

            field: input
            island: true
        }
    }
    IconButton {
        id: send

        objectName: "send"
        anchors.right: parent.right
        anchors.rightMargin: (parent.height - height) / 2
        anchors.verticalCenter: parent.verticalCenter
        diameter: Units.submitButton
        reach: Units.space4
        iconSize: Units.submitIcon
        iconColor: Theme.islandText
        ground: field.canSubmit ? Theme.islandAccent : Theme.islandControlHovered
        enabled: field.canSubmit
        accessibleName: field.texts.english ? "Send" : "发送"
        icon: "arrow-up"
        onClicked: field.submit()
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// Says one thing that the user has to take note of, before anything else in the program's windows;
/// or asks for one decision. The keyboard decides a question only from the button that has the focus.
Window {
    id: dialog

    required property string message
    required property string informativeText
    required property string button
    required property string refusal ///< empty: there is nothing to decide
    required property bool returnAgrees ///< wherever the focus is

    readonly property bool asks: dialog.refusal.length > 0
    readonly property real contentHeight: Math.ceil(content.height) + 2 * Units.space32 - Units.space8

    signal dismissed()
    signal agreed()

    width: Units.alertWidth
    height: dialog.contentHeight
    minimumWidth: Units.alertWidth
    maximumWidth: Units.alertWidth
    // Not the window's height: Qt 6.8 changes it with the limits, which would then depend on themselves.
    minimumHeight: dialog.contentHeight
    maximumHeight: dialog.contentHeight
    flags: Qt.Dialog | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    modality: Qt.ApplicationModal
    color: Theme.ground
    title: "vellumo"

    onClosing: dialog.dismissed()

    Item {
        id: content

        anchors.top: parent.top
        anchors.topMargin: Units.space32 - Units.space4
        anchors.horizontalCenter: parent.horizontalCenter
        // Not by anchors: the window takes its height from this before it has laid out its content.
        width: dialog.width - 2 * Units.space32
        height: buttons.y + buttons.height
        focus: true

        Accessible.role: Accessible.AlertMessage
        Accessible.name: heading.text
        Accessible.description: detail.text

        Keys.onEscapePressed: dialog.dismissed()
        Keys.onReturnPressed: event => content.confirm(event)
        Keys.onEnterPressed: event => content.confirm(event)

        function confirm(event: KeyEvent) {
            event.accepted = !dialog.asks || dialog.returnAgrees
            if (event.accepted)
                dialog.agreed()
        }

        Text {
            id: heading

            width: parent.width
            text: dialog.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.ink
            font.pixelSize: Units.type20
            font.weight: Font.DemiBold
            lineHeightMode: Text.FixedHeight
            lineHeight: Math.round(Units.type20 * Units.titleLine)

            Accessible.role: Accessible.Heading
            Accessible.name: heading.text
        }
        Label {
            id: detail

            anchors.top: heading.bottom
            anchors.topMargin: Units.space8
            width: parent.width
            text: dialog.informativeText
            wrapMode: Text.Wrap
            color: Theme.secondInk
            lineFactor: Units.readingLine
        }
        Flow {
            id: buttons

            readonly property int needed: agree.width + (dialog.asks ? refuse.width + spacing : 0)

            anchors.top: detail.bottom
            anchors.topMargin: Units.space24
            anchors.right: parent.right
            width: Math.min(needed, content.width)
            // as the flow will have it, which lays out its buttons too late for the window
            height: needed <= content.width ? agree.height : 2 * agree.height + spacing
            spacing: Units.space8

            TextButton {
                id: refuse

                visible: dialog.asks
                width: Math.min(implicitWidth, content.width)
                minimumWidth: Units.dialogButton
                text: dialog.refusal
                onClicked: dialog.dismissed()
            }
            TextButton {
                id: agree

                width: Math.min(implicitWidth, content.width)
                minimumWidth: Units.dialogButton
                primary: true
                text: dialog.button
                onClicked: dialog.agreed()
            }
        }
    }
}

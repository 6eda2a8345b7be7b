// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A dialog of the system, drawn: pale, so that it is not taken for the dialog itself.
Card {
    id: dialog

    required property string message
    required property string detail
    required property string buttonText

    opacity: 0.6
    height: words.height + 2 * Units.space20

    Rectangle {
        id: mark

        anchors.left: parent.left
        anchors.top: parent.top
        anchors.margins: Units.space20
        width: Units.scaled(40)
        height: width
        radius: Units.radius10
        color: Theme.islandGround

        Text {
            anchors.centerIn: parent
            text: "✦"
            textFormat: Text.PlainText
            color: Theme.islandText
            font.pixelSize: Units.type20
            Accessible.ignored: true
        }
    }
    Column {
        id: words

        anchors.left: mark.right
        anchors.leftMargin: Units.space16
        anchors.right: parent.right
        anchors.rightMargin: Units.space20
        anchors.top: mark.top
        spacing: Units.space8

        Label {
            width: parent.width
            text: dialog.message
            wrapMode: Text.Wrap
            font.weight: Font.DemiBold
            lineFactor: Units.titleLine
        }
        Label {
            width: parent.width
            text: dialog.detail
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
            lineFactor: Units.readingLine
        }
        Item {
            width: parent.width
            height: open.height + Units.space4

            TextButton {
                id: open

                objectName: "dialogOpenSettings"
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                width: Math.min(implicitWidth, parent.width)
                enabled: false // a drawing; the card below has the action
                opacity: 1
                text: dialog.buttonText
                Accessible.ignored: true
            }
        }
    }
}

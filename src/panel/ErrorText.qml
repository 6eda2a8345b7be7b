// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// What went wrong, what vellumo needs, and the way to the permission if that is missing.
Item {
    id: error

    required property ResultPanelModel view
    required property BilingualText texts

    height: allow.visible ? allow.y + allow.height : need.y + need.height

    function deselect(): void {
        headline.deselect()
    }

    ReadingText {
        id: headline

        objectName: "headline"
        width: parent.width
        text: error.view.explanation
        color: Theme.islandText
        font.pixelSize: Units.type15
        font.weight: Font.DemiBold
    }
    Text {
        id: need

        anchors.top: headline.bottom
        anchors.topMargin: Units.space4
        width: parent.width
        text: "vellumo needs a readable selection to continue." // the messages above are English too
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.islandSecondText
        font.pixelSize: Units.type13
        lineHeightMode: Text.FixedHeight
        lineHeight: Math.round(Units.type13 * Units.readingLine)

        Accessible.role: Accessible.StaticText
        Accessible.name: need.text
    }
    TextButton {
        id: allow

        objectName: "allow"
        anchors.top: need.bottom
        anchors.topMargin: Units.space12
        anchors.left: parent.left
        visible: error.view.offersPermission
        island: true
        primary: true
        text: error.texts.english ? "Allow" : "允许"
        onClicked: error.view.allowAccessibility()
    }
}

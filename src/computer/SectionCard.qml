// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A section of the page: its heading and a card with its content.
Column {
    id: section

    required property string title
    default property alias content: body.data

    spacing: Units.space8

    Label {
        width: parent.width
        text: section.title
        wrapMode: Text.Wrap
        font.pixelSize: Units.type15
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Card {
        width: parent.width
        height: body.height + 2 * Units.space20

        Column {
            id: body

            anchors.top: parent.top
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: Units.space20
            spacing: Units.space16
        }
    }
}

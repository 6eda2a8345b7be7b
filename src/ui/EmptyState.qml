// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The placeholder of an empty list: a title and what to do.
Column {
    id: empty

    required property string icon
    required property string title
    required property string text

    spacing: Units.space8

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Units.scaled(56)
        height: width
        radius: width / 2
        color: Theme.softFillHovered

        LineIcon {
            anchors.centerIn: parent
            width: Units.scaled(24)
            height: width
            name: empty.icon
            color: Theme.secondInk
        }
    }
    Item {
        width: 1
        height: Units.space4
    }
    Label {
        width: parent.width
        text: empty.title
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: Units.type17
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Label {
        width: parent.width
        text: empty.text
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondInk
        lineFactor: Units.readingLine
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// One state: its mark, a title and what it means.
Item {
    id: line

    enum State { Good, Limited, Bad, Neutral }

    required property string title
    property int status: StatusLine.Neutral
    property string text: ""
    property string stateName: "" ///< the state in a word, for those who see no colours

    implicitHeight: words.height

    StatusMark {
        anchors.left: parent.left
        y: Math.round((title.lineHeight - height) / 2)
        status: line.status
    }
    Column {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: Units.statusMark + Units.space12
        anchors.right: parent.right
        spacing: Units.space2

        Label {
            id: title

            width: parent.width
            text: line.title
            wrapMode: Text.Wrap
            font.weight: Font.Medium
            Accessible.description: line.stateName
        }
        Label {
            width: parent.width
            visible: text.length > 0
            text: line.text
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
            lineFactor: Units.readingLine
        }
    }
}

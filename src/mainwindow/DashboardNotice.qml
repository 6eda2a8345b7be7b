// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A notice or question above the pages, with up to two answers. Takes no room while it is not
/// wanted.
FocusScope {
    id: notice

    required property bool wanted
    required property string words
    required property color dotColor
    property string acceptText: ""
    property string declineText: ""

    signal accepted
    signal declined

    /// Emitted when the notice disappears while it has the focus.
    signal keyboardLeft

    visible: notice.wanted
    implicitHeight: notice.visible ? card.height + Units.space16 : 0

    onWordsChanged: notice.announce()
    onVisibleChanged: {
        notice.announce()
        if (!visible && activeFocus)
            notice.keyboardLeft()
    }

    function announce(): void {
        announcer.announce(notice.visible ? notice.words : "")
    }

    Announcer {
        id: announcer
    }
    Card {
        id: card

        anchors.top: parent.top
        anchors.topMargin: Units.space16
        width: notice.width
        height: Math.max(words.height, answers.height) + 2 * Units.space12

        Rectangle {
            anchors.left: parent.left
            anchors.leftMargin: Units.space16
            y: words.y + (words.lineHeight - height) / 2
            width: Units.statusDot
            height: width
            radius: width / 2
            color: notice.dotColor
        }
        Label {
            id: words

            objectName: notice.objectName + "Words"
            anchors.left: parent.left
            anchors.leftMargin: Units.space16 + Units.statusDot + Units.space12
            anchors.verticalCenter: card.verticalCenter
            anchors.right: answers.left
            anchors.rightMargin: answers.width > 0 ? Units.space12 : Units.space8
            text: notice.words
            wrapMode: Text.Wrap
            font.pixelSize: Units.type13
            lineFactor: Units.readingLine
            Accessible.role: Accessible.AlertMessage
        }
        Row {
            id: answers

            anchors.right: parent.right
            anchors.rightMargin: Units.space8
            anchors.verticalCenter: card.verticalCenter

            TextButton {
                objectName: notice.objectName + "Decline"
                visible: notice.declineText.length > 0
                quiet: true
                text: notice.declineText
                onClicked: notice.declined()
            }
            TextButton {
                objectName: notice.objectName + "Accept"
                focus: true
                visible: notice.acceptText.length > 0
                quiet: true
                text: notice.acceptText
                onClicked: notice.accepted()
            }
        }
    }
}

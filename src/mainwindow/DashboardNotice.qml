// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A notice or question above the pages, with up to two answers. Takes no room while it is not
/// wanted. It appears at once, above the pages, which make room for it in a short movement.
FocusScope {
    id: notice

    required property bool wanted
    required property string words
    required property int status ///< of StatusLine
    property string acceptText: ""
    property string declineText: ""

    property real share: notice.wanted ? 1 : 0 ///< of its room

    signal accepted
    signal declined

    /// Emitted when the notice disappears while it has the focus.
    signal keyboardLeft

    visible: notice.wanted || notice.share > 0
    implicitHeight: Math.round(notice.share * (card.height + Units.space16))

    Behavior on share {
        enabled: Units.animated
        NumberAnimation { duration: Units.quick }
    }

    onWordsChanged: notice.announce()
    onWantedChanged: {
        notice.announce()
        if (!notice.wanted && activeFocus)
            notice.keyboardLeft()
    }

    function announce(): void {
        announcer.announce(notice.wanted ? notice.words : "")
    }

    Announcer {
        id: announcer
    }
    Card {
        id: card

        anchors.top: parent.top
        anchors.topMargin: Units.space16
        width: notice.width
        visible: notice.wanted
        height: Math.max(words.height, answers.height) + 2 * Units.space12

        StatusMark {
            anchors.left: parent.left
            anchors.leftMargin: Units.space16
            y: words.y + Math.round((words.lineHeight - height) / 2)
            status: notice.status
        }
        Label {
            id: words

            objectName: notice.objectName + "Words"
            anchors.left: parent.left
            anchors.leftMargin: Units.space16 + Units.statusMark + Units.space12
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

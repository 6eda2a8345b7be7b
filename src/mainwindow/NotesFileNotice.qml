// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// What the user must know about the file of notes. Takes no room when there is nothing.
FocusScope {
    id: notice

    required property NotesFileState file
    required property bool english

    readonly property bool isUnsaved: notice.file.saveFailure.length > 0
    readonly property string words: notice.isUnsaved
        ? notice.file.unsavedText(notice.file.saveFailure, notice.english)
        : notice.file.unreadableText(notice.file.unreadableFile, notice.file.isSetAside,
                                     notice.english)

    /// It goes, and had the keyboard.
    signal keyboardLeft

    visible: notice.words.length > 0
    implicitHeight: notice.visible ? card.height + Units.space16 : 0

    onWordsChanged: announcer.announce(notice.words)
    onVisibleChanged: {
        if (!visible && activeFocus)
            notice.keyboardLeft()
    }

    Announcer {
        id: announcer
    }
    Card {
        id: card

        anchors.top: parent.top
        anchors.topMargin: Units.space16
        width: notice.width
        height: Math.max(words.height, known.visible ? known.height : 0) + 2 * Units.space12

        Rectangle {
            anchors.left: parent.left
            anchors.leftMargin: Units.space16
            y: words.y + (words.lineHeight - height) / 2
            width: Units.statusDot
            height: width
            radius: width / 2
            color: notice.isUnsaved ? Theme.bad : Theme.amber
        }
        Label {
            id: words

            objectName: "notesFileNotice"
            anchors.left: parent.left
            anchors.leftMargin: Units.space16 + Units.statusDot + Units.space12
            anchors.verticalCenter: card.verticalCenter
            anchors.right: known.visible ? known.left : parent.right
            anchors.rightMargin: known.visible ? Units.space12 : Units.space16
            text: notice.words
            wrapMode: Text.Wrap
            font.pixelSize: Units.type13
            lineFactor: Units.readingLine
            Accessible.role: Accessible.AlertMessage
        }
        TextButton {
            id: known

            objectName: "knowNotesFile"
            anchors.right: parent.right
            anchors.rightMargin: Units.space8
            anchors.verticalCenter: card.verticalCenter
            visible: !notice.isUnsaved
            focus: true
            quiet: true
            text: notice.english ? "Got it" : "知道了"
            onClicked: notice.file.acknowledge()
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The page of one note: its text, origin, meaning and follow-ups.
FocusScope {
    id: page

    required property OpenedNote note
    required property bool isFromHome ///< whether "back" leads to the home page
    required property BilingualText texts
    property string marked: "" ///< words of the search that led here

    readonly property bool english: page.texts.english
    readonly property int sidePadding: Math.max(Units.space24,
                                                Math.round((page.width - Units.noteWidth) / 2))

    signal deletionAsked

    Keys.onEscapePressed: page.note.close()
    Keys.onBackPressed: page.note.close()
    Keys.onDeletePressed: page.deletionAsked()
    Keys.onPressed: event => {
        const steps = { [Qt.Key_J]: 1, [Qt.Key_K]: -1 }
        event.accepted = event.key in steps || reader.scrollByKey(event.key)
        if (event.key in steps)
            page.note.step(steps[event.key])
    }

    Connections {
        target: page.note

        function onOpened(): void {
            reader.contentY = 0
        }
    }

    NoteBar {
        id: bar

        anchors.top: parent.top
        anchors.topMargin: Units.space20
        anchors.left: parent.left
        anchors.leftMargin: page.sidePadding - Units.space12
        anchors.right: parent.right
        anchors.rightMargin: page.sidePadding
        note: page.note
        isFromHome: page.isFromHome
        english: page.english
        onDeletionAsked: page.deletionAsked()
    }

    FollowingFlickable {
        id: reader

        objectName: "reader"
        anchors.top: bar.bottom
        anchors.topMargin: Units.space16
        anchors.bottom: parent.bottom
        width: page.width
        focus: true
        contentHeight: column.height + Units.space32

        Column {
            id: column

            anchors.horizontalCenter: parent.horizontalCenter
            width: reader.width - 2 * page.sidePadding
            spacing: Units.space16

            Label {
                objectName: "context"
                width: parent.width
                text: page.note.origin
                wrapMode: Text.Wrap
                color: Theme.secondInk
            }
            Card {
                width: parent.width
                height: source.height + 2 * Units.space16

                Rectangle {
                    anchors.left: parent.left
                    anchors.top: parent.top
                    anchors.bottom: parent.bottom
                    anchors.margins: Units.space16
                    width: Units.bar
                    radius: width / 2
                    color: Theme.accent
                }
                NoteText {
                    id: source

                    objectName: "sourceText"
                    anchors.left: parent.left
                    anchors.leftMargin: Units.space32
                    anchors.right: parent.right
                    anchors.rightMargin: Units.space20
                    anchors.top: parent.top
                    anchors.topMargin: Units.space16
                    text: page.note.sourceText
                    marked: page.marked
                }
            }
            NoteText {
                objectName: "translation"
                width: parent.width
                visible: text.length > 0
                text: page.note.translation
                marked: page.marked
                font.pixelSize: page.note.translation.length <= 120 ? Units.type17 : Units.type15
                font.weight: Font.DemiBold
            }
            NoteText {
                objectName: "explanation"
                width: parent.width
                visible: text.length > 0
                text: page.note.explanation
                marked: page.marked
                paragraphGap: Units.space4
            }
            Label {
                width: parent.width
                visible: page.note.isShortened
                text: page.english ? "Only the beginning is shown. Copy includes the whole note."
                                   : "这里只显示开头部分，复制会带上全文。"
                wrapMode: Text.Wrap
                color: Theme.secondInk
                font.pixelSize: Units.type12
            }
            ErrorLine {
                width: parent.width
                text: page.note.pageError
            }
            Rectangle {
                width: parent.width
                height: Units.hairline
                visible: thread.count > 0
                color: Theme.hairline
            }
            Repeater {
                id: thread

                model: page.note.exchanges

                NoteExchange {
                    width: column.width
                    marked: page.marked
                }
            }
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        y: reader.y
        flickable: reader
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Library
import Vellumo.Ui

/// The home page: a greeting, a few figures and the newest notes.
ScrollPage {
    id: page

    required property NotesOverview overview
    required property NotesLibrary library
    required property BilingualText texts

    readonly property bool english: page.texts.english
    readonly property bool isEmpty: page.library.total === 0

    /// `row` is one of the newest notes.
    signal noteChosen(row: int)
    signal menuAsked(card: Item, x: real, y: real, row: int)
    signal deletionAsked(row: int)
    signal allNotesAsked

    property int keptCard: -1
    property string keptId: ""

    Connections {
        target: page.library

        function onLatestAboutToRefresh(): void {
            page.keptCard = -1
            for (let i = 0; i < cards.count; ++i) {
                if (cards.itemAt(i)?.focus)
                    page.keptCard = i
            }
            page.keptId = page.library.latestIdAt(page.keptCard)
        }
        function onLatestRefreshed(): void {
            if (page.keptCard < 0)
                return
            const row = page.library.latestRowOf(page.keptId)
            // takes the active focus as well if the page has it
            const card = cards.itemAt(row >= 0 ? row : Math.min(page.keptCard, cards.count - 1))
            if (card !== null)
                card.focus = true
        }
    }

    Label {
        objectName: "greeting"
        width: parent.width
        text: page.overview.greeting
        wrapMode: Text.Wrap
        font.pixelSize: Units.type24
        font.letterSpacing: Units.tightTracking
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
    }
    Item {
        width: 1
        height: Units.space4
    }
    Label {
        objectName: "summary"
        width: parent.width
        visible: !page.isEmpty
        text: page.overview.summary
        wrapMode: Text.Wrap
        color: Theme.secondInk
        font.pixelSize: Units.type14
        lineFactor: Units.readingLine
    }
    Item {
        width: 1
        height: Units.space24
    }
    HomeTiles {
        width: parent.width
        visible: !page.isEmpty
        overview: page.overview
        english: page.english
    }
    FirstNote {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(Units.scaled(460), parent.width)
        visible: page.isEmpty
        english: page.english
    }
    Item {
        width: parent.width
        height: all.height + Units.space20 + Units.space4
        visible: !page.isEmpty

        Label {
            anchors.left: parent.left
            anchors.verticalCenter: all.verticalCenter
            text: page.english ? "Latest" : "最近"
            font.pixelSize: Units.type15
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        TextButton {
            id: all

            objectName: "allNotes"
            anchors.right: parent.right
            anchors.rightMargin: -Units.space12
            anchors.top: parent.top
            anchors.topMargin: Units.space20
            quiet: true
            text: page.english ? "All notes" : "全部笔记"
            onClicked: page.allNotesAsked()
        }
    }
    Column {
        id: latest

        width: parent.width
        visible: !page.isEmpty
        spacing: Units.space8

        Accessible.role: Accessible.List
        Accessible.name: page.english ? "Latest" : "最近"

        Repeater {
            id: cards

            model: page.library.latest

            NoteCard {
                id: card

                required property int index

                objectName: "latest"

                width: latest.width
                activeFocusOnTab: true
                hasKeyboard: activeFocus
                onAction: page.noteChosen(card.index)
                onMenuAsked: (x, y) => page.menuAsked(card, x, y, card.index)
                Keys.onPressed: event => {
                    const keys = [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]
                    event.accepted = keys.includes(event.key)
                    if (event.accepted && !event.isAutoRepeat)
                        card.action(Qt.NoModifier)
                }
                Keys.onDeletePressed: page.deletionAsked(card.index)
                Keys.onMenuPressed: card.askForMenu()
                Keys.onUpPressed: card.nextItemInFocusChain(false).forceActiveFocus()
                Keys.onDownPressed: card.nextItemInFocusChain(true).forceActiveFocus()
            }
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// All notes that are found, below their headings. Only what can be seen exists.
FocusScope {
    id: list

    required property MainWindowModel main
    required property bool english
    required property int sidePadding

    property real keptY: 0

    function toTop(): void {
        rows.positionViewAtBeginning()
        rows.currentIndex = -1
    }
    function step(by: int): void {
        const last = rows.count - 1
        let next = Math.max(0, Math.min(last, rows.currentIndex + by))
        // headings are passed over, in the direction of the step or back
        const direction = by < 0 ? -1 : 1
        if (list.main.library.isHeading(next))
            next = next + direction >= 0 && next + direction <= last ? next + direction : next + 1
        if (next <= last && !list.main.library.isHeading(next))
            rows.currentIndex = next
        // the first heading belongs to the first note
        if (rows.currentIndex <= 1)
            rows.positionViewAtBeginning()
    }

    Connections {
        target: list.main.library

        function onRowsAboutToRefresh(): void {
            list.keptY = rows.contentY
        }
        function onRowsRefreshed(): void {
            rows.contentY = Math.min(list.keptY, Math.max(0, rows.contentHeight - rows.height))
        }
    }

    ListView {
        id: rows

        objectName: "rows"
        anchors.fill: parent
        model: list.main.library.rows
        focus: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true
        clip: true
        reuseItems: true
        cacheBuffer: 200
        currentIndex: -1
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        bottomMargin: Units.space24

        Accessible.role: Accessible.List
        Accessible.name: list.english ? "Notes" : "笔记"
        Accessible.focusable: true

        onActiveFocusChanged: {
            if (activeFocus && currentIndex < 0)
                list.step(1)
        }
        Keys.onUpPressed: list.step(-1)
        Keys.onDownPressed: list.step(1)
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(rows.height / (Units.noteRow + Units.space8)) - 1)
            event.accepted = true
            if (event.key === Qt.Key_PageUp)
                list.step(-page)
            else if (event.key === Qt.Key_PageDown)
                list.step(page)
            else if (event.key === Qt.Key_Home)
                list.step(-rows.count)
            else if (event.key === Qt.Key_End)
                list.step(rows.count)
            else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter
                     || event.key === Qt.Key_Space)
                list.main.openRow(rows.currentIndex)
            else
                event.accepted = false
        }

        delegate: Item {
            id: row

            required property int index
            required property bool isHeading
            required property string title
            required property string detail
            required property string when
            required property string place
            required property int followUps

            width: rows.width
            height: row.isHeading ? heading.height : Units.noteRow + Units.space8

            NotesHeader {
                id: heading

                x: list.sidePadding
                width: parent.width - 2 * x
                height: Math.round(Units.type15 * Units.cardLine) + Units.space8
                    + (row.index > 0 ? Units.space20 : Units.space4)
                visible: row.isHeading
                title: row.title
                detail: row.detail
                count: row.followUps
                Accessible.ignored: !visible
            }
            NoteCard {
                x: list.sidePadding
                width: parent.width - 2 * x
                visible: !row.isHeading
                english: list.english
                title: row.title
                detail: row.detail
                when: row.when
                place: row.place
                followUps: row.followUps
                hasKeyboard: rows.activeFocus && row.ListView.isCurrentItem
                Accessible.ignored: !visible
                onAction: list.main.openRow(row.index)
            }
        }
    }
    ScrollThumb {
        x: list.width - width - Units.space2
        flickable: rows
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

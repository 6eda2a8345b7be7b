// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// How vellumo stands on this computer: what it may do, who explains, what works.
FocusScope {
    id: page

    required property ComputerModel computer
    required property BilingualText texts
    property bool syncsNotes: false ///< somebody is signed in
    property string syncProblem: ""
    property date syncTime

    readonly property bool english: page.texts.english
    readonly property int sidePadding: Math.max(Units.space24,
                                                Math.round((page.width - Units.pageWidth) / 2))
    /// Who has the keyboard in this window.
    readonly property Item keyboardItem: page.Window.activeFocusItem

    onVisibleChanged: {
        if (page.visible)
            page.computer.refresh()
    }
    Component.onCompleted: page.computer.refresh()
    onKeyboardItemChanged: following.restart()

    Keys.onPressed: event => {
        const distance = event.key === Qt.Key_Up ? -60 : event.key === Qt.Key_Down ? 60
            : event.key === Qt.Key_PageUp ? 80 - reader.height
            : event.key === Qt.Key_PageDown ? reader.height - 80 : 0
        if (distance === 0)
            return
        event.accepted = true
        reader.scrollTo(reader.contentY + distance)
    }

    Connections {
        target: page.computer

        function onServiceRequested(): void {
            service.begin()
            reader.scrollTo(service.y)
        }
    }
    // not before what has just appeared has its place
    Timer {
        id: following

        interval: 0
        onTriggered: reader.follow()
    }

    Flickable {
        id: reader

        objectName: "computerReader"
        width: page.width
        height: page.height
        contentWidth: width
        contentHeight: column.y + column.height + Units.space32
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true
        clip: true

        function scrollTo(y: real): void {
            contentY = Math.max(0, Math.min(Math.max(0, contentHeight - height), y))
        }
        function follow(): void {
            for (let item = page.keyboardItem; item !== column; item = item.parent) {
                if (item === null)
                    return
            }
            const place = page.keyboardItem.mapToItem(reader.contentItem, 0, 0)
            const room = Units.space48
            if (place.y - room < contentY)
                scrollTo(place.y - room)
            else if (place.y + page.keyboardItem.height + room > contentY + height)
                scrollTo(place.y + page.keyboardItem.height + room - height)
        }

        Column {
            id: column

            x: page.sidePadding
            y: Units.pageTop
            width: reader.width - 2 * x
            spacing: Units.space24

            Label {
                width: parent.width
                text: page.english ? "This computer" : "这台电脑"
                wrapMode: Text.Wrap
                font.pixelSize: Units.type24
                font.letterSpacing: Units.tightTracking
                font.weight: Font.Bold
                Accessible.role: Accessible.Heading
            }
            PermissionSection {
                width: parent.width
                computer: page.computer
                english: page.english
            }
            ServiceSection {
                id: service

                width: parent.width
                computer: page.computer
                english: page.english
            }
            LoginSection {
                width: parent.width
                computer: page.computer
                english: page.english
            }
            WorksSection {
                width: parent.width
                computer: page.computer
                english: page.english
            }
            ProblemSection {
                width: parent.width
                syncsNotes: page.syncsNotes
                syncProblem: page.syncProblem
                syncTime: page.syncTime
                computer: page.computer
                english: page.english
            }
        }
    }
    ScrollThumb {
        x: page.width - width - Units.space2
        flickable: reader
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

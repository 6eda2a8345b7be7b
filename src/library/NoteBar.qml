// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The back button of a note's page and the actions for the note, in a second line where one is too
/// narrow.
Item {
    id: bar

    required property OpenedNote note
    required property bool isFromHome
    required property bool english

    signal deletionAsked

    height: actions.anchors.topMargin + actions.height

    TextButton {
        id: back

        objectName: "back"
        anchors.left: parent.left
        quiet: true
        icon: "back"
        text: bar.isFromHome ? (bar.english ? "Home" : "首页") : (bar.english ? "Notes" : "笔记")
        onClicked: bar.note.close()
    }
    Flow {
        id: actions

        readonly property int needed: remove.width + copy.width + ask.width + 2 * Units.space8
            + (open.visible ? open.width + Units.space8 : 0)
        readonly property bool fits: back.width + remove.implicitWidth + copy.implicitWidth
            + ask.implicitWidth + (open.visible ? open.implicitWidth : 0) + 5 * Units.space8
            <= bar.width

        anchors.top: parent.top
        anchors.topMargin: actions.fits ? 0 : back.height + Units.space8
        anchors.right: parent.right
        width: actions.fits ? actions.needed : bar.width - Units.space12
        spacing: Units.space8

        TextButton {
            id: remove

            objectName: "delete"
            quiet: true
            icon: "delete"
            text: bar.english ? "Delete" : "删除"
            onClicked: bar.deletionAsked()
        }
        TextButton {
            id: open

            objectName: "openPage"
            visible: bar.note.hasPage
            quiet: true
            icon: "open"
            text: bar.english ? "Open page" : "打开网页"
            onClicked: bar.note.openPage()
        }
        TextButton {
            id: copy

            objectName: "copy"
            quiet: true
            icon: "copy"
            text: copied.running ? (bar.english ? "Copied" : "已复制")
                                 : (bar.english ? "Copy" : "复制")
            onClicked: {
                bar.note.copy()
                copied.restart()
                announcer.announce(bar.english ? "Copied" : "已复制")
            }

            Timer {
                id: copied
                interval: Units.feedback
            }
        }
        TextButton {
            id: ask

            objectName: "askFurther"
            primary: true
            icon: "ask"
            text: bar.english ? "Ask a follow-up" : "继续追问"
            onClicked: bar.note.askFurther()
        }
    }
    Announcer {
        id: announcer
    }
}

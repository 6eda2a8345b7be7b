// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// One note: what was read and where, what it means, and everything that was asked about it.
FocusScope {
    id: page

    required property OpenedNote note
    required property bool isFromHome ///< it was opened there
    required property BilingualText texts

    readonly property bool english: page.texts.english
    readonly property int sidePadding: Math.max(Units.space24,
                                                Math.round((page.width - Units.noteWidth) / 2))
    property bool isUnopened: false

    Keys.onEscapePressed: page.note.close()
    Keys.onBackPressed: page.note.close()
    Keys.onPressed: event => { event.accepted = reader.scrollByKey(event.key) }

    Connections {
        target: page.note

        function onOpened(): void {
            page.isUnopened = false
            reader.contentY = 0
        }
    }

    Item {
        id: bar

        x: page.sidePadding - Units.space12
        y: Units.space20
        width: page.width - x - page.sidePadding
        height: flow.y + flow.height

        TextButton {
            id: back

            objectName: "back"
            quiet: true
            icon: "back"
            text: page.isFromHome ? (page.english ? "Home" : "首页")
                                            : (page.english ? "Notes" : "笔记")
            onClicked: page.note.close()
        }
        Flow {
            id: flow

            readonly property bool fits: back.width + copy.implicitWidth + ask.implicitWidth
                + (open.visible ? open.implicitWidth : 0) + 4 * Units.space8 <= bar.width

            x: flow.fits ? bar.width - width : Units.space12
            y: flow.fits ? 0 : back.height + Units.space8
            width: flow.fits ? copy.width + ask.width + Units.space8
                               + (open.visible ? open.width + Units.space8 : 0)
                             : bar.width - Units.space12
            spacing: Units.space8

            TextButton {
                id: open

                objectName: "openPage"
                visible: page.note.page.length > 0
                quiet: true
                icon: "open"
                text: page.english ? "Open page" : "打开网页"
                onClicked: page.isUnopened = !page.note.openPage()
            }
            TextButton {
                id: copy

                objectName: "copy"
                quiet: true
                icon: "copy"
                text: copied.running ? (page.english ? "Copied" : "已复制")
                                     : (page.english ? "Copy" : "复制")
                onClicked: {
                    page.note.copy()
                    copied.restart()
                    announcer.announce(page.english ? "Copied" : "已复制")
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
                text: page.english ? "Ask further" : "继续追问"
                onClicked: page.note.askFurther()
            }
        }
        Announcer {
            id: announcer
        }
    }

    FollowingFlickable {
        id: reader

        objectName: "reader"
        y: bar.y + bar.height + Units.space16
        width: page.width
        height: page.height - y
        focus: true
        contentHeight: column.height + Units.space32

        Column {
            id: column

            x: page.sidePadding
            width: reader.width - 2 * x
            spacing: Units.space16

            Label {
                objectName: "context"
                width: parent.width
                text: (page.note.place.length > 0 ? page.note.place + " · " : "") + page.note.when
                wrapMode: Text.Wrap
                color: Theme.secondInk
            }
            Card {
                width: parent.width
                height: source.height + 2 * Units.space16

                Rectangle {
                    x: Units.space16
                    y: Units.space16
                    width: Units.bar
                    height: parent.height - 2 * y
                    radius: width / 2
                    color: Theme.accent
                }
                NoteText {
                    id: source

                    objectName: "sourceText"
                    x: Units.space32
                    y: Units.space16
                    width: parent.width - x - Units.space20
                    text: page.note.sourceText
                }
            }
            NoteText {
                objectName: "translation"
                width: parent.width
                visible: text.length > 0
                text: page.note.translation
                font.pixelSize: page.note.translation.length <= 120 ? Units.type17 : Units.type15
                font.weight: Font.DemiBold
            }
            NoteText {
                objectName: "explanation"
                width: parent.width
                visible: text.length > 0
                text: page.note.explanation
                paragraphGap: Units.space4
            }
            Label {
                width: parent.width
                visible: page.note.isShortened
                text: page.english ? "Only the beginning is shown. Copy takes the whole note."
                                   : "这里只显示开头部分,复制会带上全文。"
                wrapMode: Text.Wrap
                color: Theme.secondInk
                font.pixelSize: Units.type12
            }
            ErrorLine {
                width: parent.width
                text: !page.isUnopened ? ""
                    : (page.english ? "No browser could be opened. The address is %1"
                                    : "无法打开浏览器。网址是 %1").arg(page.note.page)
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
                }
            }
        }
    }
    ScrollThumb {
        x: page.width - width - Units.space2
        y: reader.y
        flickable: reader
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// Progress and result of an export, visible until the result is dismissed.
Card {
    id: line

    required property NotesExporter exporter
    required property bool english

    readonly property bool isWriting: line.exporter.state === NotesExporter.Writing
    readonly property bool isWritten: line.exporter.state === NotesExporter.Written
    readonly property bool isBad: !line.isWriting && !line.isWritten
                                  && line.exporter.state !== NotesExporter.Cancelled
    readonly property bool fits: words.implicitWidth + buttons.oneLine + Units.space32
                                 <= line.width - Units.space16

    /// Emitted when the line disappears while one of its buttons has the focus.
    signal keyboardLeft

    visible: line.exporter.state !== NotesExporter.Idle
    height: line.fits ? Math.max(words.height, Units.button) + 2 * Units.space8
                      : words.height + buttons.height + 3 * Units.space8

    Announcer {
        id: announcer
    }
    Connections {
        target: line.exporter

        property int announcedState: NotesExporter.Idle

        function onChanged(): void {
            if (line.exporter.state === announcedState)
                return
            announcedState = line.exporter.state
            announcer.announce(line.exporter.outcome)
        }
    }
    Label {
        id: words

        objectName: "exportOutcome"
        anchors.left: parent.left
        anchors.leftMargin: Units.space16
        y: line.fits ? Math.round((line.height - height) / 2) : Units.space8
        width: line.fits ? line.width - buttons.oneLine - Units.space32
                         : line.width - 2 * Units.space16
        text: line.exporter.outcome
        wrapMode: Text.Wrap
        color: line.isBad ? Theme.bad : Theme.ink
        lineFactor: Units.readingLine
    }
    Flow {
        id: buttons

        readonly property int oneLine: (folder.visible ? folder.implicitWidth : 0)
            + (cancel.visible ? cancel.implicitWidth : 0)
            + (close.visible ? close.implicitWidth : 0)

        anchors.right: parent.right
        anchors.rightMargin: line.fits ? Units.space8 : Units.space4
        y: line.fits ? Math.round((line.height - height) / 2)
                     : words.y + words.height + Units.space8
        width: line.fits ? oneLine : line.width - 2 * Units.space4

        TextButton {
            id: folder

            objectName: "openFolder"
            visible: line.isWritten
            quiet: true
            icon: "open"
            text: line.english ? "Open folder" : "打开文件夹"
            onClicked: line.exporter.openFolder()
        }
        TextButton {
            id: cancel

            objectName: "cancelExport"
            visible: line.isWriting
            quiet: true
            text: line.english ? "Cancel" : "取消"
            onClicked: line.exporter.cancel()
            onVisibleChanged: {
                if (!visible && activeFocus)
                    close.forceActiveFocus(Qt.OtherFocusReason)
            }
        }
        TextButton {
            id: close

            objectName: "dismissExport"
            visible: !line.isWriting
            quiet: true
            text: line.english ? "Dismiss" : "关闭"
            onClicked: {
                const hadKeyboard = close.activeFocus
                line.exporter.dismiss()
                if (hadKeyboard)
                    line.keyboardLeft()
            }
        }
    }
    Rectangle {
        anchors.left: parent.left
        anchors.leftMargin: Units.radius14
        anchors.bottom: parent.bottom
        width: Math.round((line.width - 2 * Units.radius14) * line.exporter.progress)
        height: Units.bar
        visible: line.isWriting
        radius: height / 2
        color: Theme.accent

        Accessible.role: Accessible.ProgressBar
        Accessible.name: words.text
    }
}

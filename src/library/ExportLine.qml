// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// How far an export is, and what came of it, until that has been seen. Absent otherwise.
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

    property bool isFolderUnopened: false

    /// It goes, and one of its buttons had the keyboard.
    signal keyboardLeft

    visible: line.exporter.state !== NotesExporter.Idle
    height: line.fits ? Math.max(words.height, Units.button) + 2 * Units.space8
                      : words.height + buttons.height + 3 * Units.space8

    function outcome(): string {
        const english = line.english
        switch (line.exporter.state) {
        case NotesExporter.Writing:
            return (english ? "Exporting… %1 of %2" : "正在导出… %1 / %2")
                .arg(line.exporter.written).arg(line.exporter.total)
        case NotesExporter.Written:
            if (line.isFolderUnopened)
                return (english ? "No file manager could be opened. The file is %1"
                                : "无法打开文件管理器。文件在 %1").arg(line.exporter.path)
            if (line.exporter.total === 1)
                return (english ? "One note is in “%1”" : "1 条笔记已导出到“%1”")
                    .arg(line.exporter.fileName)
            return (english ? "%1 notes are in “%2”" : "%1 条笔记已导出到“%2”")
                .arg(line.exporter.total).arg(line.exporter.fileName)
        case NotesExporter.Cancelled:
            return english ? "Export cancelled. No file was written." : "已取消导出,没有写入文件。"
        case NotesExporter.NoSpace:
            return english ? "There is not enough room for the file. Nothing was written."
                           : "空间不足,没有写入文件。"
        case NotesExporter.NotAllowed:
            return english ? "vellumo may not write there. Choose another folder."
                           : "没有写入该位置的权限,请选择其他文件夹。"
        case NotesExporter.NoFolder:
            return english ? "The folder is not there any more. Choose another one."
                           : "该文件夹已不存在,请选择其他文件夹。"
        case NotesExporter.NotAFile:
            return english ? "Something else has this name already. Choose another one."
                           : "这个名称已被占用,请换一个名称。"
        case NotesExporter.Failed:
            return (english ? "The file could not be written: %1" : "无法写入文件:%1")
                .arg(line.exporter.detail)
        default:
            return ""
        }
    }

    Announcer {
        id: announcer
    }
    Connections {
        target: line.exporter

        property int told: NotesExporter.Idle

        function onChanged(): void {
            if (line.exporter.state === told)
                return
            told = line.exporter.state
            line.isFolderUnopened = false
            announcer.announce(line.outcome())
        }
    }
    Label {
        id: words

        objectName: "exportOutcome"
        x: Units.space16
        y: line.fits ? Math.round((line.height - height) / 2) : Units.space8
        width: line.fits ? line.width - buttons.oneLine - Units.space32
                         : line.width - 2 * Units.space16
        text: line.outcome()
        wrapMode: Text.Wrap
        color: line.isBad ? Theme.bad : Theme.ink
        lineFactor: Units.readingLine
    }
    Flow {
        id: buttons

        readonly property int oneLine: (folder.visible ? folder.implicitWidth : 0)
            + (cancel.visible ? cancel.implicitWidth : 0)
            + (close.visible ? close.implicitWidth : 0)

        x: line.fits ? line.width - width - Units.space8 : Units.space4
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
            onClicked: line.isFolderUnopened = !line.exporter.openFolder()
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
            text: line.english ? "Dismiss" : "知道了"
            onClicked: {
                const hadKeyboard = close.activeFocus
                line.exporter.dismiss()
                if (hadKeyboard)
                    line.keyboardLeft()
            }
        }
    }
    Rectangle {
        x: Units.radius14
        y: line.height - height
        width: Math.round((line.width - 2 * x) * line.exporter.written
                          / Math.max(1, line.exporter.total))
        height: Units.bar
        visible: line.isWriting
        radius: height / 2
        color: Theme.accent

        Accessible.role: Accessible.ProgressBar
        Accessible.name: words.text
    }
}

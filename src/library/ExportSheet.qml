// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// Asks which notes to export and in which format, before the file is chosen.
Sheet {
    id: sheet

    required property NotesExporter exporter
    required property NotesLibrary library
    required property BilingualText texts

    readonly property bool english: sheet.texts.english
    readonly property bool hasFound: sheet.library.hasFound
    readonly property bool asksWhich: sheet.hasFound || sheet.hasSelected
    readonly property bool asksWhat: !sheet.exporter.asksToReplace
    readonly property bool hasSelected: sheet.library.selection.count > 0
    readonly property string all: sheet.english ? "All" : "全部"
    readonly property string found: sheet.english ? "Found" : "搜索结果"
    readonly property string selected: sheet.english ? "Selected" : "已选"

    accessibleName: title.text
    sheetWidth: Units.scaled(440)
    onDismissed: sheet.exporter.isOpen = false

    component Remark: Label {
        width: parent.width
        topPadding: Units.space8
        bottomPadding: Units.space20
        wrapMode: Text.Wrap
        color: Theme.secondInk
        font.pixelSize: Units.type12
        lineFactor: Units.readingLine
    }

    Column {
        width: parent.width

        Label {
            id: title

            objectName: "exportTitle"
            width: parent.width
            bottomPadding: sheet.asksWhat && sheet.asksWhich ? Units.space20 : Units.space8
            text: sheet.english ? "Export notes" : "导出笔记"
            wrapMode: Text.Wrap
            font.pixelSize: Units.type20
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        SegmentedPicker {
            objectName: "exportScope"
            width: parent.width
            visible: sheet.asksWhat && sheet.asksWhich
            focus: sheet.asksWhich
            labels: sheet.hasFound && sheet.hasSelected ? [sheet.all, sheet.found, sheet.selected]
                : sheet.hasFound ? [sheet.all, sheet.found] : [sheet.all, sheet.selected]
            values: sheet.hasFound && sheet.hasSelected
                ? [NotesExporter.All, NotesExporter.Found, NotesExporter.Selected]
                : sheet.hasFound ? [NotesExporter.All, NotesExporter.Found]
                                 : [NotesExporter.All, NotesExporter.Selected]
            value: sheet.exporter.scope
            accessibleName: sheet.english ? "Which notes" : "导出哪些笔记"
            onChosen: value => { sheet.exporter.scope = value }
        }
        Remark {
            objectName: "exportCount"
            visible: sheet.asksWhat
            topPadding: sheet.asksWhich ? Units.space8 : 0
            text: sheet.exporter.scopeText
        }
        SegmentedPicker {
            objectName: "exportFormat"
            width: parent.width
            visible: sheet.asksWhat
            focus: !sheet.asksWhich
            labels: ["Markdown", "CSV", "JSON"]
            values: [NotesExporter.Markdown, NotesExporter.Csv, NotesExporter.Json]
            value: sheet.exporter.format
            accessibleName: sheet.english ? "Format" : "格式"
            onChosen: value => { sheet.exporter.format = value }
        }
        Remark {
            visible: sheet.asksWhat
            text: sheet.exporter.formatText
        }
        Label {
            id: question

            objectName: "replaceQuestion"
            width: parent.width
            bottomPadding: Units.space24
            visible: !sheet.asksWhat
            text: sheet.exporter.replaceText
            wrapMode: Text.Wrap
            lineFactor: Units.readingLine
            onVisibleChanged: announcer.announce(visible ? text : "")

            Announcer {
                id: announcer
            }
        }
        Flow {
            id: buttons

            readonly property int needed: cancel.width + next.width + spacing
                + (replace.visible ? replace.width + spacing : 0)

            anchors.right: parent.right
            width: Math.min(needed, parent.width)
            spacing: Units.space12

            TextButton {
                id: cancel

                objectName: "exportCancel"
                minimumWidth: Units.dialogButton
                text: sheet.english ? "Cancel" : "取消"
                onClicked: sheet.dismissed()
            }
            TextButton {
                id: next

                objectName: "exportChoose"
                minimumWidth: Units.dialogButton
                primary: sheet.asksWhat
                text: sheet.asksWhat ? (sheet.english ? "Save as…" : "选择文件…")
                                     : (sheet.english ? "Choose another name…" : "换个名称…")
                onClicked: sheet.exporter.chooseFile()
            }
            TextButton {
                id: replace

                objectName: "exportReplace"
                minimumWidth: Units.dialogButton
                visible: !sheet.asksWhat
                primary: true
                text: sheet.english ? "Replace" : "替换"
                onClicked: sheet.exporter.replace()
            }
        }
    }
}

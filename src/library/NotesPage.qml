// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The page of all notes, with search and grouping.
FocusScope {
    id: page

    required property NotesLibrary library
    required property NoteDeletion deletion
    required property NotesExporter exporter
    required property OpenedNote note
    required property BilingualText texts

    readonly property bool english: page.texts.english
    readonly property NoteSelection selection: page.library.selection
    readonly property int sidePadding: Math.max(Units.space24,
                                                Math.round((page.width - Units.pageWidth) / 2))
    readonly property bool isNarrow: page.width - 2 * page.sidePadding < Units.scaled(520)

    signal noteChosen(row: int)

    function focusSearch(): void {
        field.focusField()
    }

    function widen(): void {
        if (chip.activeFocus)
            field.focusField()
        page.library.widen()
    }

    // ends the selection, then the filter by place; the search field handles Escape before
    Keys.onEscapePressed: event => {
        event.accepted = page.selection.isActive || page.library.isNarrowed
        if (page.selection.isActive)
            page.selection.isActive = false
        else
            page.widen()
    }

    Connections {
        target: page.library

        function onNarrowingChanged(): void {
            list.toTop()
        }
    }

    Item {
        id: top

        anchors.left: parent.left
        anchors.leftMargin: page.sidePadding
        anchors.right: parent.right
        anchors.rightMargin: page.sidePadding
        anchors.top: parent.top
        anchors.topMargin: Units.pageTop
        height: picker.y + picker.height
            + (chip.visible ? Units.space12 + chip.height : 0)

        Label {
            id: title

            anchors.left: parent.left
            text: page.english ? "Notes" : "笔记"
            font.pixelSize: Units.type24
            font.letterSpacing: Units.tightTracking
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }
        Label {
            id: count

            objectName: "count"
            visible: page.library.total > 0
            anchors.baseline: title.baseline
            anchors.left: title.right
            anchors.leftMargin: Units.space12
            text: page.library.countText
            color: Theme.secondInk
        }
        NotesActions {
            id: actions

            readonly property bool fits: title.width + count.width + oneLine + Units.space32
                <= top.width

            anchors.right: parent.right
            anchors.rightMargin: fits ? -Units.space12 : 0
            y: fits ? Math.round((title.height - Units.button) / 2) : title.height + Units.space4
            width: fits ? oneLine : top.width + Units.space12
            visible: page.library.total > 0
            library: page.library
            deletion: page.deletion
            exporter: page.exporter
            english: page.english
            onSelecting: list.forceActiveFocus(Qt.OtherFocusReason)
        }
        SearchField {
            id: field

            visible: page.library.total > 0
            y: Units.space16 + (actions.fits ? title.height : actions.y + actions.height)
            anchors.left: parent.left
            anchors.right: page.isNarrow ? parent.right : picker.left
            anchors.rightMargin: page.isNarrow ? 0 : Units.space12
            focus: true
            placeholder: page.english ? "Search texts, explanations and follow-ups"
                                      : "搜索原文、解释和追问"
            clearName: page.english ? "Clear the search" : "清除搜索"
            text: page.library.query
            onTextChanged: {
                page.library.query = field.text
                list.toTop()
            }
            Keys.onDownPressed: list.forceActiveFocus(Qt.TabFocusReason)
        }
        SegmentedPicker {
            id: picker

            objectName: "grouping"
            visible: page.library.total > 0
            anchors.right: parent.right
            anchors.rightMargin: page.isNarrow ? parent.width - width : 0
            y: page.isNarrow ? field.y + field.height + Units.space12 : field.y
            labels: page.english ? ["By day", "By source"] : ["按日期", "按来源"]
            values: [NoteRowsModel.ByDay, NoteRowsModel.ByPlace]
            value: page.library.grouping
            accessibleName: page.english ? "Grouping" : "分组"
            onChosen: value => {
                page.library.grouping = value
                list.toTop()
            }
        }
        PlaceChip {
            id: chip

            objectName: "placeFilter"
            anchors.top: picker.bottom
            anchors.topMargin: Units.space12
            anchors.left: parent.left
            width: Math.min(implicitWidth, top.width)
            visible: page.library.isNarrowed
            text: page.library.narrowingText
            accessibleName: page.library.widenText
            onClicked: page.widen()
        }
    }
    NotesList {
        id: list

        anchors.top: top.bottom
        anchors.topMargin: Units.space16
        anchors.bottom: parent.bottom
        anchors.bottomMargin: outcome.visible ? outcome.height + Units.space24 : 0
        anchors.left: parent.left
        anchors.right: parent.right
        visible: page.library.found > 0
        library: page.library
        deletion: page.deletion
        exporter: page.exporter
        english: page.english
        sidePadding: page.sidePadding
        note: page.note
        onNoteChosen: row => page.noteChosen(row)

        Behavior on anchors.bottomMargin {
            enabled: Units.animated
            NumberAnimation { duration: Units.quick }
        }
    }
    ExportLine {
        id: outcome

        anchors.left: top.left
        anchors.right: top.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Units.space16
        exporter: page.exporter
        english: page.english
        onKeyboardLeft: list.forceActiveFocus(Qt.OtherFocusReason)
    }
    FirstNote {
        y: top.y + title.height + Units.space24 + Units.space4 // as on the home page
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(Units.scaled(460), page.width - 2 * Units.space24)
        visible: page.library.total === 0
        english: page.english
    }
    NothingFound {
        y: list.y + Math.max(0, Math.round((list.height - height) * 0.4))
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(Units.scaled(400), page.width - 2 * Units.space24)
        visible: page.library.total > 0 && page.library.found === 0 && !page.library.isSearching
        english: page.english
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Text to read, select and copy. Plain always; its lines keep one distance.
TextEdit {
    id: reading

    property real lineFactor: Units.readingLine
    property int paragraphGap: 0
    property bool island: true

    readOnly: true
    selectByMouse: true
    activeFocusOnPress: true
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    color: Theme.islandBody
    selectionColor: Theme.islandSelection
    selectedTextColor: Theme.islandText
    font.pixelSize: Units.type15

    Accessible.role: Accessible.StaticText
    Accessible.name: reading.text

    Keys.onMenuPressed: menu.openAtCursor()

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
    TextMenu {
        id: menu

        field: reading
        island: reading.island
    }

    readonly property UnwatchedClipboard clipboard: UnwatchedClipboard { field: reading }
    // a member of its own, since the element's default list takes items only
    readonly property ReadingTextFormat lines: ReadingTextFormat {
        document: reading.textDocument
        lineHeight: Math.round(reading.font.pixelSize * reading.lineFactor)
        paragraphGap: reading.paragraphGap
    }
}

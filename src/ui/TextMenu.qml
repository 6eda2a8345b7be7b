// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The context menu of a text that can be selected or typed. To be declared in the TextEdit or
/// TextInput that it is for.
MouseArea {
    id: area

    required property var field ///< the TextEdit or TextInput
    property bool island: false

    readonly property bool english: InterfaceLanguage.english
    readonly property bool isSecret: area.field.echoMode !== undefined
                                     && area.field.echoMode !== TextInput.Normal

    anchors.fill: parent
    acceptedButtons: Qt.RightButton
    onClicked: mouse => area.open(mouse.x, mouse.y)

    /// For the keyboard: opens the menu at the cursor.
    function openAtCursor(): void {
        const cursor = area.field.cursorRectangle
        area.open(cursor.x, cursor.y + cursor.height)
    }
    function open(x: real, y: real): void {
        if (!area.field.activeFocus)
            area.field.forceActiveFocus(Qt.PopupFocusReason)
        opener.open(area.field, x, y, area.entries())
    }
    function entries(): var {
        const field = area.field
        const hasSelection = field.selectedText.length > 0
        const copyAll = {
            name: "menuCopy", text: area.english ? "Copy" : "复制", enabled: field.length > 0,
            run: () => {
                const cursor = field.cursorPosition
                if (!hasSelection)
                    field.selectAll()
                field.copy()
                if (!hasSelection)
                    field.cursorPosition = cursor
            }
        }
        const selectAll = {
            name: "menuSelectAll", text: area.english ? "Select all" : "全选",
            enabled: field.length > 0, run: () => field.selectAll()
        }
        if (field.readOnly)
            return [copyAll, selectAll]
        const canCopy = hasSelection && !area.isSecret
        return [
            { name: "menuCut", text: area.english ? "Cut" : "剪切", enabled: canCopy,
              run: () => field.cut() },
            { name: "menuCopy", text: area.english ? "Copy" : "复制", enabled: canCopy,
              run: () => field.copy() },
            { name: "menuPaste", text: area.english ? "Paste" : "粘贴", run: () => field.paste() },
            selectAll
        ]
    }

    readonly property MenuOpener opener: MenuOpener { id: opener; island: area.island }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Library
import Vellumo.Ui

/// The context menu of a note in a list.
MenuOpener {
    id: menu

    required property OpenedNote note
    required property NoteDeletion deletion
    required property NotesExporter exporter

    readonly property bool english: InterfaceLanguage.english

    /// `openNote` shows the note's page, `extra` are further entries before the last two.
    function openFor(card: Item, x: real, y: real, id: string, openNote: var, extra: var): void {
        const own = [
            { name: "menuOpen", text: menu.english ? "Open" : "打开", run: openNote },
            { name: "menuCopyNote", text: menu.english ? "Copy" : "复制",
              run: () => menu.note.copyNote(id) }
        ]
        const page = { name: "menuOpenPage", text: menu.english ? "Open page" : "打开网页",
                       run: () => menu.note.openPageOf(id) }
        const last = [
            { name: "menuExport", text: menu.english ? "Export…" : "导出…",
              enabled: menu.exporter.state !== NotesExporter.Writing,
              run: () => menu.exporter.openFor(id) },
            { name: "menuDelete", text: menu.english ? "Delete" : "删除",
              run: () => menu.deletion.deleteNote(id) }
        ]
        menu.open(card, x, y, [...own, ...(menu.note.hasPageOf(id) ? [page] : []), ...extra, ...last])
    }
}

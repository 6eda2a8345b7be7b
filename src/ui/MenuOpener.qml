// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Opens context menus in the window of an item.
QtObject {
    id: opener

    property bool island: false

    readonly property Component menu: Component {
        ContextMenu {}
    }

    /// The entries are those of ContextMenu, the point that of the item.
    function open(item: Item, x: real, y: real, entries: var): void {
        let root = item
        while (root.parent !== null)
            root = root.parent
        opener.menu.createObject(root, {
            entries: entries, at: item.mapToItem(root, x, y), island: opener.island
        })
    }
}

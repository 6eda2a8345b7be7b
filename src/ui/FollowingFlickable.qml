// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// Scrolls vertically and brings the focused item on screen. The parent forwards its keys: a
/// Flickable receives none while a child has focus.
Flickable {
    id: flickable

    /// What is kept free above and below what is brought on screen.
    property int room: Units.space48
    /// Who has the keyboard in this window.
    readonly property Item keyboardItem: flickable.Window.activeFocusItem
    /// Who had it last. A window that gets the keyboard back does not scroll under the pointer.
    property Item followed: null

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true
    clip: true

    function scrollTo(y: real): void {
        flickable.contentY = Math.max(0, Math.min(flickable.contentHeight - flickable.height, y))
    }
    /// Scrolls by the arrow and page keys; whether it was one of them.
    function scrollByKey(key: int): bool {
        const page = flickable.height - Units.scrollOverlap
        const distance = key === Qt.Key_Up ? -Units.scrollStep
            : key === Qt.Key_Down ? Units.scrollStep
            : key === Qt.Key_PageUp ? -page : key === Qt.Key_PageDown ? page : 0
        if (distance !== 0)
            flickable.scrollTo(flickable.contentY + distance)
        return distance !== 0
    }
    function reveal(item: Item): void {
        const top = item.mapToItem(flickable.contentItem, 0, 0).y - flickable.room
        const bottom = top + item.height + 2 * flickable.room
        if (top < flickable.contentY || bottom - top > flickable.height)
            flickable.scrollTo(top)
        else if (bottom > flickable.contentY + flickable.height)
            flickable.scrollTo(bottom - flickable.height)
    }
    function holds(item: Item): bool {
        while (item !== null && item.parent !== flickable.contentItem)
            item = item.parent
        return item !== null
    }

    onKeyboardItemChanged: following.restart()

    // Not before what has just appeared has its place.
    Timer {
        id: following

        interval: 0
        onTriggered: {
            const item = flickable.keyboardItem
            if (item === null || item.parent === null || item === flickable.followed)
                return
            flickable.followed = item
            if (flickable.holds(item))
                flickable.reveal(item)
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// A page of an ordinary window that may be longer than it: one column, scrolled with the wheel,
/// with the arrow and page keys, and by what has the keyboard in it.
FocusScope {
    id: page

    default property alias content: column.data
    property alias spacing: column.spacing
    property alias contentY: flickable.contentY
    property alias contentHeight: flickable.contentHeight

    property Item revealed: null
    property real revealedAt: 0

    /// Scrolls so that this item of the column is at the top, also when the page has just been made
    /// and is still being laid out.
    function reveal(item: Item): void {
        page.revealed = item
        flickable.scrollTo(item.y)
        page.revealedAt = flickable.contentY
    }

    Keys.onPressed: event => { event.accepted = flickable.scrollByKey(event.key) }

    FollowingFlickable {
        id: flickable

        anchors.fill: parent
        focus: true
        contentHeight: column.y + column.height + Units.space32

        Column {
            id: column

            readonly property int sidePadding: Math.max(
                Units.space24, Math.round((page.width - Units.pageWidth) / 2))

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: column.sidePadding
            anchors.rightMargin: column.sidePadding
            y: Units.pageTop

            onPositioningComplete: {
                // not once something else has scrolled
                if (page.revealed !== null && flickable.contentY === page.revealedAt)
                    page.reveal(page.revealed)
            }
        }
    }
    Timer {
        running: page.revealed !== null
        interval: Units.layoutTime
        onTriggered: page.revealed = null
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        flickable: flickable
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

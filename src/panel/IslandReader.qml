// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// The scrolling middle of the island.
Flickable {
    id: reader

    required property real topPadding
    required property real contentItemHeight
    property bool followsBottom: false

    contentWidth: reader.width
    contentHeight: reader.topPadding + reader.contentItemHeight
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick
    pixelAligned: true
    clip: reader.contentHeight > reader.height

    function toTop(): void {
        reader.followsBottom = false
        reader.cancelFlick()
        reader.contentY = 0
    }
    /// Stays at the bottom while the panel grows, until the user scrolls.
    function toBottom(): void {
        reader.cancelFlick()
        reader.followsBottom = true
        reader.settle()
    }
    function scrollBy(distance: real): void {
        reader.followsBottom = false
        reader.contentY = Math.max(0, Math.min(reader.lowestY(), reader.contentY + distance))
    }
    function lowestY(): real {
        return Math.max(0, reader.contentHeight - reader.height)
    }
    function settle(): void {
        if (reader.followsBottom || reader.contentY > reader.lowestY())
            reader.contentY = reader.lowestY()
    }

    onHeightChanged: reader.settle()
    onContentHeightChanged: reader.settle()
    onMovementStarted: reader.followsBottom = false

    ScrollThumb {
        parent: reader // not the content, which it would scroll with
        anchors.right: parent.right
        anchors.rightMargin: Units.space4
        flickable: reader
        onDragged: reader.followsBottom = false
    }
}

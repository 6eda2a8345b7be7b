// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// Shows a Flickable's position and can be dragged; absent while everything fits. A child of the
/// Flickable's parent, or of the Flickable itself with its parent set to it.
Item {
    id: bar

    required property Flickable flickable
    property color color: Theme.islandControlHovered
    property color activeColor: Theme.islandControlPressed

    readonly property real hidden: bar.flickable.contentHeight - bar.flickable.height
    readonly property real travel: Math.max(1, bar.height - thumb.height)

    signal dragged

    visible: bar.hidden > 0.5
    width: Units.scrollThumb + 2 * Units.space2
    height: bar.flickable.height

    Rectangle {
        id: thumb

        x: Units.space2
        y: bar.visible ? bar.flickable.contentY / bar.hidden * bar.travel : 0
        width: Units.scrollThumb
        height: Math.max(0.08, bar.flickable.height / bar.flickable.contentHeight) * bar.height
        radius: Units.scrollThumb / 2
        color: pointer.pressed || pointer.containsMouse ? bar.activeColor : bar.color
    }
    MouseArea {
        id: pointer

        property real grip: 0

        anchors.fill: parent
        anchors.leftMargin: -Units.space4
        anchors.rightMargin: -Units.space4
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => {
            const onThumb = mouse.y >= thumb.y && mouse.y <= thumb.y + thumb.height
            pointer.grip = onThumb ? mouse.y - thumb.y : thumb.height / 2
            pointer.follow(mouse.y)
        }
        onPositionChanged: mouse => {
            if (pointer.pressed)
                pointer.follow(mouse.y)
        }

        function follow(y: real): void {
            const share = Math.max(0, Math.min(1, (y - pointer.grip) / bar.travel))
            bar.flickable.contentY = share * bar.hidden
            bar.dragged()
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// What a release brings, on a card. Long notes scroll, with the wheel or the arrow keys.
Rectangle {
    id: card

    property alias text: reading.text
    required property string label

    readonly property real lowestY: Math.max(0, reader.contentHeight - reader.height)

    height: Math.min(reader.contentHeight, Units.releaseNotes) + 2 * Units.space12
    radius: Units.radius10
    color: Theme.surface
    border.width: Units.hairline
    border.color: Theme.hairline
    activeFocusOnTab: card.lowestY > 0

    Accessible.role: Accessible.Grouping
    Accessible.name: card.label
    Accessible.description: card.text
    Accessible.focusable: card.activeFocusOnTab

    Keys.onUpPressed: card.scrollBy(-3 * reading.lines.lineHeight)
    Keys.onDownPressed: card.scrollBy(3 * reading.lines.lineHeight)
    Keys.onPressed: event => {
        const page = reader.height - reading.lines.lineHeight
        if (event.key === Qt.Key_PageUp)
            card.scrollBy(-page)
        else if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Space)
            card.scrollBy(page)
        else if (event.key === Qt.Key_Home)
            card.scrollBy(-card.lowestY)
        else if (event.key === Qt.Key_End)
            card.scrollBy(card.lowestY)
        else
            return
        event.accepted = true
    }

    function scrollBy(distance: real): void {
        reader.contentY = Math.max(0, Math.min(card.lowestY, reader.contentY + distance))
    }

    FocusRing {
        shown: card.activeFocus
        controlRadius: card.radius
    }

    Flickable {
        id: reader

        anchors.fill: parent
        anchors.margins: Units.space12
        anchors.leftMargin: Units.space16
        anchors.rightMargin: Units.space16
        contentWidth: width
        contentHeight: reading.height
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.VerticalFlick
        pixelAligned: true
        clip: true

        ReadingText {
            id: reading

            island: false
            objectName: "notesText"
            width: reader.width
            color: Theme.ink
            selectedTextColor: Theme.ink
            font.pixelSize: Units.type13
        }
    }

    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        y: reader.y
        flickable: reader
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

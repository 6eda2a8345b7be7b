// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A tile of the home page: a heading above its content.
Card {
    id: tile

    required property string heading
    property string spoken: "" ///< for screen readers
    /// Below each other, tiles are as high as their content.
    property bool isStacked: false
    property int contentHeight: Units.scaled(72)
    default property alias content: body.data

    height: !tile.isStacked ? Units.tile
          : title.height + tile.contentHeight + 2 * Units.space16 + Units.space12

    Accessible.role: Accessible.Grouping
    Accessible.name: tile.heading
    Accessible.description: tile.spoken

    Label {
        id: title

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: Units.space16
        text: tile.heading
        elide: Text.ElideRight
        color: Theme.secondInk
        font.pixelSize: Units.type12
    }
    Item {
        id: body

        anchors.top: title.top
        anchors.bottom: parent.bottom
        anchors.left: title.left
        anchors.right: title.right
        anchors.bottomMargin: Units.space16
    }
}

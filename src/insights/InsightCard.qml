// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A card with a chart and its heading. A remark on one of the figures follows the heading.
Card {
    id: card

    required property string heading
    property string figure: ""
    default property alias content: body.data
    /// Height of the content below the heading.
    property int bodyHeight: body.childrenRect.height

    implicitHeight: body.y + card.bodyHeight + Units.space20

    Label {
        id: title

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.margins: Units.space20
        text: card.heading
        font.pixelSize: Units.type14
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
    }
    Label {
        readonly property bool fits: title.width + implicitWidth + Units.space16
            <= card.width - 2 * Units.space20

        objectName: "figure"
        anchors.right: parent.right
        anchors.rightMargin: fits ? Units.space20 : card.width - width - Units.space20
        y: fits ? title.y + title.height - height - 1 : title.y + title.height
        width: Math.min(implicitWidth, card.width - 2 * Units.space20)
        visible: card.figure.length > 0
        text: card.figure
        elide: Text.ElideRight
        color: Theme.secondInk
        font.pixelSize: Units.type12
    }
    Item {
        id: body

        anchors.top: title.bottom
        anchors.topMargin: Units.space16
        anchors.left: parent.left
        anchors.leftMargin: Units.space20
        anchors.right: parent.right
        anchors.rightMargin: Units.space20
        height: card.bodyHeight
    }
}

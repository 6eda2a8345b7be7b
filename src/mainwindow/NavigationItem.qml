// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// One entry of the side bar.
ButtonArea {
    id: item

    required property string icon
    required property string text
    property bool chosen: false

    accessibleName: item.text
    implicitHeight: Units.navigationItem

    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: item.chosen

    Rectangle {
        anchors.fill: parent
        radius: Units.radius10
        color: item.chosen ? Theme.surface : item.hovered ? Theme.softFillHovered : "transparent"
        border.width: item.chosen ? Units.hairline : 0
        border.color: Theme.hairline

        Behavior on color {
            enabled: Units.animated
            ColorAnimation { duration: Units.quick }
        }
    }
    LineIcon {
        id: mark

        anchors.left: parent.left
        anchors.leftMargin: Units.space12
        anchors.verticalCenter: parent.verticalCenter
        width: Units.icon
        height: width
        name: item.icon
        color: item.chosen ? Theme.ink : Theme.secondInk
    }
    Text {
        anchors.left: mark.right
        anchors.leftMargin: Units.space12
        anchors.right: parent.right
        anchors.rightMargin: Units.space8
        height: parent.height
        text: item.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: item.chosen ? Theme.ink : Theme.secondInk
        font.pixelSize: Units.type13
        font.weight: item.chosen ? Font.DemiBold : Font.Normal
        Accessible.ignored: true
    }
    FocusRing {
        shown: item.activeFocus
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Shows the place that filters the list. A click removes the filter.
ButtonArea {
    id: chip

    required property string text

    implicitWidth: words.implicitWidth + cross.width + 2 * Units.space12 + Units.space8
    implicitHeight: Units.scaled(30)

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: chip.hovered || chip.pressed ? Theme.softFillHovered : Theme.softFill
    }
    TextLine {
        id: words

        anchors.left: parent.left
        anchors.leftMargin: Units.space12
        anchors.right: cross.left
        anchors.rightMargin: Units.space8
        anchors.verticalCenter: parent.verticalCenter
        text: chip.text
        color: Theme.ink
        size: Units.type13
        weight: Font.Medium
    }
    LineIcon {
        id: cross

        anchors.right: parent.right
        anchors.rightMargin: Units.space12
        anchors.verticalCenter: parent.verticalCenter
        width: Units.iconSmall
        height: width
        name: "cross"
        color: chip.hovered ? Theme.ink : Theme.secondInk
    }
    FocusRing {
        shown: chip.activeFocus
        controlRadius: chip.height / 2
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A heading that folds what follows it.
ButtonArea {
    id: heading

    required property string text
    required property bool isUnfolded

    accessibleName: heading.text
    Accessible.checkable: true
    Accessible.checked: heading.isUnfolded
    implicitHeight: Math.max(label.height, Units.scaled(24))

    LineIcon {
        id: mark

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: Units.iconSmall
        height: width
        rotation: heading.isUnfolded ? 90 : 0
        name: "chevron"
        color: heading.hovered ? Theme.ink : Theme.secondInk

        Behavior on rotation {
            enabled: Units.animated
            NumberAnimation { duration: Units.quick }
        }
    }
    Label {
        id: label

        anchors.left: mark.right
        anchors.leftMargin: Units.space4
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: heading.text
        wrapMode: Text.Wrap
        font.pixelSize: Units.type15
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
    FocusRing {
        shown: heading.activeFocus
        controlRadius: Units.radius6
    }
}

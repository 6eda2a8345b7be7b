// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The heading of a group of notes, which it folds: a day or a place, and the number of notes.
Item {
    id: header

    required property string title
    required property string detail
    required property int count
    required property bool isFolded
    required property bool hasKeyboard

    signal action

    Accessible.role: Accessible.Button
    Accessible.name: header.title
    Accessible.description: header.count
    Accessible.checkable: true
    Accessible.checked: !header.isFolded
    Accessible.onPressAction: header.action()

    MouseArea {
        id: pointer

        anchors.fill: line
        anchors.margins: -Units.space4
        hoverEnabled: true
        onClicked: header.action()
    }
    FocusRing {
        anchors.fill: line
        shown: header.hasKeyboard
        controlRadius: Units.radius6
    }
    // In the margin, so that headings and cards begin at the same place.
    LineIcon {
        anchors.right: line.left
        anchors.rightMargin: Units.space4
        anchors.verticalCenter: line.verticalCenter
        visible: header.isFolded || pointer.containsMouse || header.hasKeyboard
        width: Units.iconSmall
        height: width
        rotation: header.isFolded ? 0 : 90
        name: "chevron"
        color: pointer.containsMouse ? Theme.ink : Theme.secondInk

        Behavior on rotation {
            enabled: Units.animated
            NumberAnimation { duration: Units.quick }
        }
    }
    Row {
        id: line

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Units.space8
        width: parent.width
        spacing: Units.space8

        TextLine {
            id: name

            width: Math.min(implicitWidth, header.width - number.width - Units.space8)
            text: header.title
            color: Theme.ink
            size: Units.type15
            weight: Font.DemiBold
        }
        TextLine {
            id: path

            y: name.height - height - 1
            width: Math.max(0, Math.min(implicitWidth,
                                        header.width - name.width - number.width
                                        - 2 * Units.space8))
            visible: header.detail.length > 1 && width > Units.space48
            text: header.detail
            color: Theme.secondInk
            size: Units.type12
        }
        TextLine {
            id: number

            y: name.height - height - 1
            width: implicitWidth
            text: header.count
            color: Theme.secondInk
            size: Units.type12
        }
    }
}

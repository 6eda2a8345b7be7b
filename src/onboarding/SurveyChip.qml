// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// One answer of a question.
ButtonArea {
    id: chip

    required property string text
    required property string iconFile
    required property bool isChosen

    accessibleName: chip.text
    implicitHeight: Units.surveyChip

    Accessible.role: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: chip.isChosen

    Rectangle {
        anchors.fill: parent
        radius: Units.radius10
        color: chip.isChosen ? Theme.accentSoft
             : chip.hovered || chip.pressed ? Theme.surfaceHovered : Theme.surface
        border.width: chip.isChosen ? Units.focusRing : Units.hairline
        border.color: chip.isChosen ? Theme.accent
                    : chip.hovered ? Theme.thumb : Theme.hairline

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }
    }
    LineIcon {
        id: mark

        anchors.left: parent.left
        anchors.leftMargin: Units.space12
        anchors.verticalCenter: parent.verticalCenter
        width: Units.scaled(18)
        height: width
        name: chip.iconFile
        color: chip.isChosen ? Theme.accentSoftText : Theme.secondInk
    }
    Text {
        anchors.left: mark.right
        anchors.leftMargin: Units.space8
        anchors.right: parent.right
        anchors.rightMargin: Units.space8
        height: parent.height
        text: chip.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
        lineHeightMode: Text.FixedHeight
        lineHeight: Math.round(Units.type13 * 1.25)
        color: chip.isChosen ? Theme.accentSoftText : Theme.ink
        font.pixelSize: Units.type13
        font.weight: chip.isChosen ? Font.DemiBold : Font.Normal
        Accessible.ignored: true
    }
    FocusRing {
        shown: chip.activeFocus
    }
}

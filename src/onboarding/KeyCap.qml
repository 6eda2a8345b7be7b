// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// One key, drawn.
Item {
    id: key

    property string symbol: ""
    property string name: ""
    property bool isLit: false
    property bool isKeyToPress: false

    readonly property int inset: key.width < Units.scaled(56) ? Units.space8 : Units.space12
    readonly property color inkColor: key.isLit ? Theme.accentText
        : key.isKeyToPress ? Theme.ink : Theme.secondInk

    Accessible.ignored: true

    Rectangle { // its glow
        anchors.fill: parent
        anchors.margins: -Units.space4
        radius: Units.radius10 + Units.space4
        color: Theme.accentGlow
        visible: key.isLit
    }
    Rectangle { // its edge below
        anchors.fill: parent
        anchors.bottomMargin: -Units.space2
        radius: Units.radius10
        color: key.isLit ? Theme.accentPressed : Theme.hairline
    }
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: key.isLit ? Units.hairline : 0
        radius: Units.radius10
        color: key.isLit ? Theme.accent : Theme.surface
        border.width: Units.hairline
        border.color: key.isLit ? Theme.accent
                    : key.isKeyToPress ? Theme.accent : Theme.hairline

        Behavior on color {
            ColorAnimation { duration: Units.quick }
        }

        Text {
            visible: key.symbol.length > 0
            x: key.name.length > 0 ? key.inset : 0
            y: key.name.length > 0 ? Units.space8 : 0
            width: parent.width - 2 * x
            height: key.name.length > 0 ? implicitHeight : parent.height
            text: key.symbol
            textFormat: Text.PlainText
            horizontalAlignment: key.name.length > 0 ? Text.AlignLeft : Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            color: key.inkColor
            font.pixelSize: key.name.length > 0 ? Units.type17 : Units.type13
        }
        Text {
            visible: key.name.length > 0
            x: key.inset
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Units.space8
            width: parent.width - 2 * x + Units.space8
            text: key.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: key.inkColor
            font.pixelSize: Units.type12
            font.weight: key.isKeyToPress ? Font.DemiBold : Font.Normal
        }
    }
}

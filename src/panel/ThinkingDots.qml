// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// Three dots that light up in turn while an answer is awaited.
Item {
    id: dots

    required property string accessibleName
    property int lit: 0

    width: row.width
    height: Math.round(Units.type15 * Units.readingLine)

    Accessible.role: Accessible.StaticText
    Accessible.name: dots.accessibleName

    Row {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        spacing: Units.space4

        Repeater {
            model: 3

            Rectangle {
                required property int index

                width: Units.space4
                height: Units.space4
                radius: Units.space2
                color: index === dots.lit ? Theme.islandSecondText : Theme.islandControlPressed
            }
        }
    }
    Timer {
        interval: 360
        repeat: true
        // an answer that is never to come must not keep a hidden panel awake
        running: dots.visible && dots.Window.visibility !== Window.Hidden && Units.animated
        onTriggered: dots.lit = (dots.lit + 1) % 3
    }
}

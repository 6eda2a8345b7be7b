// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Turns something on and off, at once. It shows what is, not what was asked for.
ButtonArea {
    id: control

    property bool checked: false

    implicitWidth: Units.switchHeight * 1.75
    implicitHeight: Units.switchHeight

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: control.checked

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.switchOff

        Behavior on color {
            enabled: Units.animated
            ColorAnimation { duration: Units.quick }
        }
    }
    Rectangle {
        x: control.checked ? control.width - width - Units.space2 : Units.space2
        y: Units.space2
        width: control.height - 2 * Units.space2
        height: width
        radius: width / 2
        color: Theme.switchKnob

        Behavior on x {
            enabled: Units.animated
            NumberAnimation { duration: Units.quick }
        }
    }
    FocusRing {
        shown: control.activeFocus
        controlRadius: control.height / 2
    }
}

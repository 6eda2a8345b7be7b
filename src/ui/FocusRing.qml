// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// The outline of a control that has the keyboard. Fill the control with it.
Rectangle {
    id: ring

    required property bool shown
    property int controlRadius: Units.radius10

    anchors.fill: parent
    anchors.margins: -(Units.focusGap + Units.focusRing)
    visible: ring.shown
    radius: ring.controlRadius + Units.focusGap + Units.focusRing
    color: "transparent"
    border.width: Units.focusRing
    border.color: Theme.accent
}

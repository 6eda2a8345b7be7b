// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// Placeholder lines while the answer is awaited; a light passes over them slowly.
Item {
    id: lines

    required property bool running
    /// Where the light is, in widths of the item; it starts and ends outside.
    property real light: -0.4

    height: second.y + second.height

    SkeletonLine {
        id: first

        anchors.left: parent.left
        width: Math.round(lines.width * 0.78)
        light: lines.light * lines.width / width
    }
    SkeletonLine {
        id: second

        anchors.top: first.bottom
        anchors.topMargin: Units.space8
        anchors.left: parent.left
        width: Math.round(lines.width * 0.92)
        light: lines.light * lines.width / width
    }

    // Steps of a timer instead of an animation: half the frames, and calm enough.
    Timer {
        interval: 33
        repeat: true
        running: lines.running && Units.animated
        onTriggered: lines.light = lines.light > 1.4 ? -0.4 : lines.light + 0.03
        onRunningChanged: lines.light = -0.4
    }
}

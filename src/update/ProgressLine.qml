// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Indeterminate progress. Does not move under reduced motion.
Rectangle {
    id: track

    height: Units.progressLine
    radius: height / 2
    color: Theme.softFillHovered
    clip: true

    Accessible.role: Accessible.ProgressBar
    Accessible.ignored: true // the words above say it

    Rectangle {
        id: piece

        width: Units.animated ? track.width / 4 : track.width / 2
        height: track.height
        radius: track.radius
        color: Theme.accent

        NumberAnimation on x {
            running: track.visible && Units.animated
            loops: Animation.Infinite
            from: -piece.width
            to: track.width
            duration: Units.progressRound
            easing.type: Easing.InOutQuad
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// One line of LoadingLines.
Rectangle {
    id: line

    /// The position of the light, in widths of the line.
    required property real light

    readonly property real reach: 0.3

    function within(position: real): real {
        return Math.max(0, Math.min(1, position))
    }

    height: Units.skeletonLine
    radius: Units.skeletonLine / 2
    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop { position: 0; color: Theme.skeleton }
        GradientStop { position: line.within(line.light - line.reach); color: Theme.skeleton }
        GradientStop {
            position: line.within(line.light)
            color: line.light < 0 || line.light > 1 ? Theme.skeleton : Theme.skeletonLight
        }
        GradientStop { position: line.within(line.light + line.reach); color: Theme.skeleton }
        GradientStop { position: 1; color: Theme.skeleton }
    }
}

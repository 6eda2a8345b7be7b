// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// The lower edge of content that is being uncovered, which fades into the island's ground.
Rectangle {
    height: Units.space24
    gradient: Gradient {
        GradientStop {
            position: 0
            color: Theme.islandGroundClear
        }
        GradientStop {
            position: 1
            color: Theme.islandGround
        }
    }
}

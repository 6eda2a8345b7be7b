// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// A raised sheet of paper on the ground of an ordinary window.
Rectangle {
    radius: Units.radius14
    color: Theme.surface
    border.width: Units.hairline
    border.color: Theme.hairline
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// How many cards there are, and which one this is.
Row {
    id: dots

    required property int count
    required property int position
    required property string text

    spacing: Units.dot

    Accessible.role: Accessible.StaticText
    Accessible.name: dots.text

    Repeater {
        model: dots.count

        Rectangle {
            id: dot

            required property int index
            readonly property bool isCurrent: dot.index === dots.position

            width: dot.isCurrent ? 3 * Units.dot : Units.dot
            height: Units.dot
            radius: Units.dot / 2
            color: dot.isCurrent ? Theme.ink : Theme.thumb

            Behavior on width {
                NumberAnimation { duration: Units.move; easing.type: Easing.InOutQuad }
            }
        }
    }
}

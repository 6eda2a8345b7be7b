// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// The follow-up questions and their answers under a hairline.
Item {
    id: thread

    required property ResultPanelModel view
    required property BilingualText texts

    readonly property int count: rows.count

    height: rule.height + Units.space12 + column.height

    function settle(): void {
        column.forceLayout()
    }

    Rectangle {
        id: rule

        width: parent.width
        height: Units.hairline
        color: Theme.islandHairline
    }
    Column {
        id: column

        anchors.top: rule.bottom
        anchors.topMargin: Units.space12
        width: parent.width
        spacing: Units.space12

        Repeater {
            id: rows

            model: thread.view.thread

            FollowUpRow {
                width: column.width
                texts: thread.texts
            }
        }
    }
}

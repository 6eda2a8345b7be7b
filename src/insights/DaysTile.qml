// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// Notes per day of the last two weeks.
HomeTile {
    id: tile

    required property NotesOverview overview
    required property bool english

    heading: tile.english ? "Last 14 days" : "近 14 天"
    spoken: tile.overview.daysText

    Row {
        id: bars

        anchors.fill: parent
        anchors.topMargin: Units.scaled(28)
        spacing: Units.space4

        Repeater {
            model: tile.overview.days

            Item {
                id: day

                required property int modelData

                width: (bars.width - 13 * bars.spacing) / 14
                height: bars.height

                Rectangle {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    height: Math.max(Units.space2, Math.round(parent.height * day.modelData
                                                   / tile.overview.maxPerDay))
                    radius: Math.min(Units.radius3, width / 2, height / 2)
                    color: day.modelData > 0 ? Theme.accent : Theme.hairline
                }
            }
        }
    }
}

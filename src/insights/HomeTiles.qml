// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// The tiles of the home page: this month, the places, and the last two weeks.
Grid {
    id: tiles

    required property NotesOverview overview
    required property bool english

    readonly property int perRow: tiles.width >= Units.scaled(560) ? 3 : 1
    readonly property int tileWidth: Math.floor((tiles.width - (tiles.perRow - 1) * tiles.spacing)
                                                / tiles.perRow)

    columns: tiles.perRow
    spacing: Units.space12

    MonthTile {
        objectName: "monthTile"
        width: tiles.tileWidth
        isStacked: tiles.perRow === 1
        overview: tiles.overview
        english: tiles.english
    }
    PlacesTile {
        objectName: "placesTile"
        width: tiles.tileWidth
        isStacked: tiles.perRow === 1
        overview: tiles.overview
        english: tiles.english
    }
    DaysTile {
        objectName: "daysTile"
        // with what rounding leaves, so that the row ends where the cards below do
        width: tiles.width - (tiles.perRow - 1) * (tiles.tileWidth + tiles.spacing)
        isStacked: tiles.perRow === 1
        overview: tiles.overview
        english: tiles.english
    }
}

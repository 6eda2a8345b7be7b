// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// The month in numbers, where it was read, and the last two weeks day by day.
Grid {
    id: tiles

    required property NotesOverview overview
    required property bool english

    readonly property int perRow: tiles.width >= Units.scaled(560) ? 3 : 1
    readonly property int tileWidth: Math.floor((tiles.width - (tiles.perRow - 1) * tiles.spacing)
                                                / tiles.perRow)
    readonly property int most: tiles.mostOfADay()

    columns: tiles.perRow
    spacing: Units.space12

    function comparison(): string {
        const difference = tiles.overview.thisMonth - tiles.overview.lastMonth
        const month = tiles.overview.lastMonthName
        if (tiles.overview.lastMonth === 0)
            return tiles.english ? "none in %1".arg(month) : "%1没有".arg(month)
        if (difference === 0)
            return tiles.english ? "as many as in %1".arg(month) : "与 %1持平".arg(month)
        return (difference > 0 ? (tiles.english ? "%1 more than in %2" : "比 %2多 %1")
                               : (tiles.english ? "%1 fewer than in %2" : "比 %2少 %1"))
            .arg(Math.abs(difference)).arg(month)
    }

    function mostOfADay(): int {
        let most = 1
        for (let i = 0; i < tiles.overview.days.length; ++i)
            most = Math.max(most, tiles.overview.days[i])
        return most
    }
    function placesText(): string {
        let text = ""
        for (let i = 0; i < tiles.overview.placeNames.length; ++i)
            text += (i > 0 ? ", " : "") + tiles.overview.placeNames[i] + " "
                + tiles.overview.placeCounts[i]
        return text
    }
    function daysText(): string {
        let text = ""
        for (let i = 0; i < tiles.overview.days.length; ++i)
            text += (i > 0 ? ", " : "") + tiles.overview.days[i]
        return text
    }

    component Tile: Card {
        id: tile

        required property string heading
        property string spoken: ""
        property alias contentY: under.y

        width: tiles.tileWidth
        height: Math.max(Units.tile, tiles.perRow === 1 ? under.y + Units.space32 : 0)

        Accessible.role: Accessible.Grouping
        Accessible.name: tile.heading
        Accessible.description: tile.spoken

        Label {
            id: under

            x: Units.space16
            y: Units.space16
            width: parent.width - 2 * x
            text: tile.heading
            elide: Text.ElideRight
            color: Theme.secondInk
            font.pixelSize: Units.type12
        }
    }

    Tile {
        objectName: "monthTile"
        heading: tiles.english ? "This month" : "本月"
        spoken: number.text + ", " + compared.text

        Label {
            id: number

            x: Units.space16
            y: parent.height - compared.height - height - Units.space16 - Units.space4
            text: tiles.overview.thisMonth
            font.pixelSize: Units.scaled(38)
            font.weight: Font.Bold
            lineFactor: 1.2
        }
        Label {
            id: compared

            objectName: "comparison"
            x: Units.space16
            y: parent.height - height - Units.space16
            width: parent.width - 2 * x
            text: tiles.comparison()
            elide: Text.ElideRight
            color: Theme.secondInk
            font.pixelSize: Units.type12
        }
    }

    Tile {
        id: where

        objectName: "placesTile"
        heading: tiles.english ? "Where you read, last 30 days" : "近 30 天读自"
        spoken: tiles.placesText()

        Column {
            id: places

            x: Units.space16
            y: parent.height - height - Units.space16
            width: parent.width - 2 * x
            spacing: Units.space8

            Repeater {
                model: tiles.overview.placeNames

                Item {
                    id: place

                    required property int index
                    required property string modelData

                    readonly property int count: tiles.overview.placeCounts[place.index] ?? 0
                    readonly property int most: tiles.overview.placeCounts[0] ?? 1

                    width: places.width
                    height: words.height + Units.space4

                    TextLine {
                        id: words

                        width: parent.width - count.width - Units.space8
                        text: place.modelData
                        color: Theme.ink
                        size: Units.type12
                    }
                    TextLine {
                        id: count

                        x: parent.width - width
                        width: implicitWidth
                        text: place.count
                        color: Theme.secondInk
                        size: Units.type12
                    }
                    Rectangle {
                        y: parent.height - height
                        width: Math.max(height, Math.round(parent.width * place.count
                                                           / Math.max(1, place.most)))
                        height: Units.bar
                        radius: height / 2
                        color: Theme.accent
                        opacity: place.index === 0 ? 1 : 0.55
                    }
                }
            }
        }
        Label {
            x: Units.space16
            y: Units.space48
            width: parent.width - 2 * x
            visible: tiles.overview.placeNames.length === 0
            text: tiles.english ? "Nothing lately." : "最近没有。"
            color: Theme.secondInk
        }
    }

    Tile {
        objectName: "daysTile"
        heading: tiles.english ? "Last 14 days" : "近 14 天"
        spoken: tiles.daysText()

        Row {
            id: bars

            readonly property int room: parent.height - y - Units.space16

            x: Units.space16
            y: Units.space16 + Units.scaled(28)
            width: parent.width - 2 * x
            height: bars.room
            spacing: Units.space4

            Repeater {
                model: tiles.overview.days

                Item {
                    id: day

                    required property int modelData
                    required property int index

                    width: (bars.width - 13 * bars.spacing) / 14
                    height: bars.room

                    Rectangle {
                        y: parent.height - height
                        width: parent.width
                        height: Math.max(2, Math.round(parent.height * day.modelData / tiles.most))
                        radius: Math.min(3, width / 2, height / 2)
                        color: day.modelData > 0 ? Theme.accent : Theme.hairline
                    }
                }
            }
        }
    }
}

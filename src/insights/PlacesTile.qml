// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// The places with most notes in the last 30 days.
HomeTile {
    id: tile

    required property NotesOverview overview
    required property bool english

    heading: tile.english ? "Top sources, last 30 days" : "近 30 天来源"
    spoken: tile.overview.placesText
    contentHeight: Math.max(places.height, nothing.visible ? nothing.height : 0)

    Column {
        id: places

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        spacing: Units.space8

        Repeater {
            model: tile.overview.placeNames

            Item {
                id: place

                required property int index
                required property string modelData

                readonly property int count: tile.overview.placeCounts[place.index] ?? 0
                readonly property int maxCount: tile.overview.placeCounts[0] ?? 1

                width: places.width
                height: words.height + Units.space4

                TextLine {
                    id: words

                    anchors.left: parent.left
                    anchors.right: count.left
                    anchors.rightMargin: Units.space8
                    text: place.modelData
                    color: Theme.ink
                    size: Units.type12
                }
                TextLine {
                    id: count

                    anchors.right: parent.right
                    width: implicitWidth
                    text: place.count
                    color: Theme.secondInk
                    size: Units.type12
                }
                Rectangle {
                    anchors.left: parent.left
                    anchors.bottom: parent.bottom
                    width: Math.max(height, Math.round(parent.width * place.count
                                                       / Math.max(1, place.maxCount)))
                    height: Units.bar
                    radius: height / 2
                    color: Theme.accent
                }
            }
        }
    }
    Label {
        id: nothing

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.topMargin: Units.space32
        visible: tile.overview.placeNames.length === 0
        text: tile.english ? "No notes in the last 30 days." : "近 30 天没有笔记。"
        color: Theme.secondInk
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// The places with most notes as bars. Each opens its notes.
Column {
    id: chart

    required property NotesInsights insights
    required property bool english

    signal chosen(index: int)

    Accessible.role: Accessible.List
    Accessible.name: chart.english ? "Where you read" : "阅读来源"

    Repeater {
        model: chart.insights.placeNames

        ButtonArea {
            id: place

            required property int index
            required property string modelData

            readonly property int count: chart.insights.placeCounts[place.index] ?? 0

            objectName: "place"
            x: -Units.space8
            width: chart.width + 2 * Units.space8
            height: words.height + Units.bar + Units.space4 + 2 * Units.space8
            accessibleName: chart.insights.placeText(place.modelData, place.count,
                                                     chart.english)
            onClicked: chart.chosen(place.index)
            Keys.onUpPressed: place.nextItemInFocusChain(false).forceActiveFocus()
            Keys.onDownPressed: place.nextItemInFocusChain(true).forceActiveFocus()

            Rectangle {
                anchors.fill: parent
                radius: Units.radius6
                color: place.hovered ? Theme.softFill : "transparent"
            }
            TextLine {
                id: words

                anchors.top: parent.top
                anchors.left: parent.left
                anchors.right: number.left
                anchors.margins: Units.space8
                text: place.modelData
                color: Theme.ink
                size: Units.type13
            }
            TextLine {
                id: number

                anchors.top: parent.top
                anchors.right: parent.right
                anchors.margins: Units.space8
                width: implicitWidth
                text: place.count
                color: Theme.secondInk
                size: Units.type13
            }
            Rectangle {
                anchors.left: parent.left
                anchors.bottom: parent.bottom
                anchors.margins: Units.space8
                width: Math.max(height, Math.round((parent.width - 2 * Units.space8) * place.count
                                                   / Math.max(1, chart.insights.placeCounts[0])))
                height: Units.bar
                radius: height / 2
                color: Theme.accent
            }
            FocusRing {
                shown: place.activeFocus
                controlRadius: Units.radius6
            }
        }
    }
}

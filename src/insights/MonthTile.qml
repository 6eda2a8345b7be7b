// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// The number of notes of this month, compared with the previous one.
HomeTile {
    id: tile

    required property NotesOverview overview
    required property bool english

    heading: tile.english ? "This month" : "本月"
    spoken: tile.overview.monthText
    contentHeight: number.height + Units.space4 + compared.height

    Label {
        id: number

        anchors.left: parent.left
        anchors.bottom: compared.top
        anchors.bottomMargin: Units.space4
        text: tile.overview.thisMonth
        font.pixelSize: Units.scaled(38)
        font.weight: Font.Bold
        lineFactor: 1.2
    }
    Label {
        id: compared

        objectName: "comparison"
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        text: tile.overview.comparison
        elide: Text.ElideRight
        color: Theme.secondInk
        font.pixelSize: Units.type12
    }
}

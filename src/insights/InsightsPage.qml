// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Library
import Vellumo.Ui

/// The page of insights: notes by day, month, language and place.
ScrollPage {
    id: page

    required property NotesInsights insights
    required property NotesLibrary library
    required property BilingualText texts

    readonly property bool english: page.texts.english
    readonly property bool isEmpty: page.library.total === 0

    signal placeChosen(index: int)
    signal dayChosen(index: int)
    signal monthChosen(index: int)

    spacing: Units.space12

    Column {
        width: parent.width
        spacing: Units.space4

        Label {
            objectName: "insightsTitle"
            width: parent.width
            text: page.english ? "Insights" : "统计"
            font.pixelSize: Units.type24
            font.letterSpacing: Units.tightTracking
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
        }
        Label {
            objectName: "insightsSummary"
            width: parent.width
            visible: page.isEmpty || page.insights.isReady
            bottomPadding: Units.space12
            text: page.insights.summary
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type14
            lineFactor: Units.readingLine
        }
    }
    FirstNote {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(Units.scaled(460), parent.width)
        visible: page.isEmpty
        english: page.english
    }
    Column {
        id: cards

        width: parent.width
        visible: !page.isEmpty && page.insights.isReady
        spacing: Units.space12

        readonly property bool isWide: cards.width >= Units.scaled(560)
        readonly property int half: Math.floor((cards.width - cards.spacing) / 2)

        InsightCard {
            width: parent.width
            heading: page.english ? "Notes per day" : "每日笔记"
            figure: days.figure

            DayCalendar {
                id: days

                objectName: "days"
                width: parent?.width ?? 0
                insights: page.insights
                english: page.english
                onChosen: index => page.dayChosen(index)
            }
        }
        Grid {
            width: parent.width
            columns: cards.isWide ? 2 : 1
            spacing: cards.spacing

            InsightCard {
                id: monthsCard

                width: cards.isWide ? cards.half : cards.width
                height: cards.isWide ? Math.max(implicitHeight, languages.implicitHeight)
                                     : implicitHeight
                heading: page.english ? "Notes per month" : "每月笔记"
                bodyHeight: months.implicitHeight

                MonthBars {
                    id: months

                    y: monthsCard.height - monthsCard.implicitHeight
                    width: parent?.width ?? 0
                    height: implicitHeight
                    insights: page.insights
                    english: page.english
                    onChosen: index => page.monthChosen(index)
                }
            }
            InsightCard {
                id: languages

                width: cards.isWide ? cards.width - cards.half - cards.spacing : cards.width
                height: cards.isWide ? Math.max(implicitHeight, monthsCard.implicitHeight)
                                     : implicitHeight
                heading: page.english ? "Reading language" : "阅读语言"

                LanguageShares {
                    width: parent?.width ?? 0
                    insights: page.insights
                    english: page.english
                }
            }
        }
        InsightCard {
            width: parent.width
            heading: page.english ? "Where you read" : "阅读来源"
            figure: page.insights.placesNote

            PlaceBars {
                width: parent?.width ?? 0
                insights: page.insights
                english: page.english
                onChosen: index => page.placeChosen(index)
            }
        }
    }
}

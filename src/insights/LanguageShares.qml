// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// Notes by language, as parts of one bar and as a list with figures.
Column {
    id: chart

    required property NotesInsights insights
    required property bool english

    readonly property int total: Math.max(1, chart.insights.total)

    spacing: Units.space8

    /// Gives each language a minimum width, which the others make room for.
    function widthOf(index: int): int {
        const counts = chart.insights.languageCounts
        const gaps = bar.spacing * (counts.length - 1)
        const minWidth = Units.space4
        return minWidth + Math.floor((bar.width - gaps - minWidth * counts.length)
                                  * counts[index] / chart.total)
    }
    function colorOf(index: int): color {
        const colors = [Theme.accent, Theme.chartSecond, Theme.chartThird, Theme.chartFourth]
        return chart.insights.determinedLanguages[index] ? colors[index] ?? Theme.chartRest
                                                         : Theme.chartRest
    }

    Row {
        id: bar

        width: parent.width
        height: Units.shareBar
        spacing: Units.space2

        Repeater {
            model: chart.insights.languageCounts

            Rectangle {
                required property int index

                width: chart.widthOf(index)
                height: bar.height
                radius: Units.radius3
                color: chart.colorOf(index)
            }
        }
    }
    Item {
        width: 1
        height: Units.space4
    }
    Column {
        id: list

        width: parent.width
        spacing: Units.space8

        Accessible.role: Accessible.List
        Accessible.name: chart.english ? "Reading language" : "阅读语言"

        Repeater {
            model: chart.insights.languageNames

            Item {
                id: row

                required property int index
                required property string modelData

                readonly property int count: chart.insights.languageCounts[row.index] ?? 0

                width: list.width
                height: name.height

                Accessible.role: Accessible.ListItem
                Accessible.name: chart.insights.languageText(row.modelData, share.text, row.count,
                                                             chart.english)

                Rectangle {
                    anchors.left: parent.left
                    anchors.verticalCenter: parent.verticalCenter
                    width: Units.statusDot
                    height: width
                    radius: width / 2
                    color: chart.colorOf(row.index)
                }
                TextLine {
                    id: name

                    anchors.left: parent.left
                    anchors.leftMargin: Units.statusDot + Units.space8
                    anchors.right: share.left
                    anchors.rightMargin: Units.space8
                    text: row.modelData
                    color: Theme.ink
                    size: Units.type13
                }
                TextLine {
                    id: share

                    anchors.right: number.left
                    anchors.rightMargin: Units.space8
                    width: implicitWidth
                    text: chart.insights.shareTexts[row.index] ?? ""
                    color: Theme.ink
                    size: Units.type13
                }
                TextLine {
                    id: number

                    anchors.right: parent.right
                    width: Math.max(implicitWidth, Units.scaled(44))
                    alignment: Text.AlignRight
                    text: row.count
                    color: Theme.secondInk
                    size: Units.type13
                }
            }
        }
    }
    Label {
        width: parent.width
        visible: chart.insights.namesLetters
        topPadding: Units.space4
        text: chart.english ? "Detected from script and common words. Single words follow the other notes from the same source."
                            : "根据文字和常用词判断；单个词则参照同一来源的其他笔记。"
        wrapMode: Text.Wrap
        color: Theme.secondInk
        font.pixelSize: Units.type11
        lineFactor: Units.readingLine
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// Notes per month as bars, labelled with figure and month. A bar leads to its notes.
Item {
    id: chart

    required property NotesInsights insights
    required property bool english

    signal chosen(index: int)

    readonly property int maxCount: Math.max(1, ...chart.insights.months)
    readonly property int step: Math.max(1, chart.insights.months.length)
    readonly property real pitch: chart.width / chart.step
    readonly property int labelHeight: Math.round(Units.type11 * Units.cardLine)
    /// Draws each label, every second or every third, as fits.
    readonly property int every: Math.max(1, Math.ceil((widest.implicitWidth + Units.space4)
                                                       / chart.pitch))

    implicitHeight: Units.monthBars + 2 * (chart.labelHeight + Units.space4)

    Accessible.role: Accessible.List
    Accessible.name: chart.english ? "Notes per month" : "每月笔记"

    TextLine {
        id: widest

        visible: false
        text: chart.english ? "May" : "12月"
        color: Theme.secondInk
        size: Units.type11
    }
    Repeater {
        model: chart.insights.months

        ButtonArea {
            id: month

            required property int index
            required property int modelData

            readonly property bool isLast: month.index === chart.step - 1
            readonly property bool isLabelled: (chart.step - 1 - month.index) % chart.every === 0

            x: Math.round(month.index * chart.pitch)
            width: Math.floor(chart.pitch)
            height: chart.height

            objectName: "month"
            accessibleName: chart.insights.monthText(month.index, month.modelData, chart.english)
            activeFocusOnTab: month.modelData > 0
            onClicked: {
                if (month.modelData > 0)
                    chart.chosen(month.index)
            }

            TextLine {
                anchors.horizontalCenter: parent.horizontalCenter
                y: bar.y - height - Units.space2
                width: implicitWidth
                visible: month.modelData > 0 && implicitWidth <= month.width
                text: month.modelData
                color: month.isLast || month.hovered ? Theme.ink : Theme.secondInk
                size: Units.type11
                weight: month.isLast ? Font.DemiBold : Font.Normal
            }
            Rectangle {
                id: bar

                x: Math.round((month.width - width) / 2)
                y: chart.height - chart.labelHeight - Units.space4 - height
                width: Math.min(Units.scaled(22), Math.round(month.width * 0.64))
                height: month.modelData === 0 ? Units.space2
                    : Math.max(Units.space4, Math.round(Units.monthBars * month.modelData / chart.maxCount))
                radius: Math.min(Units.radius3, height / 2)
                color: month.modelData === 0 ? Theme.hairline : Theme.accent
            }
            FocusRing {
                shown: month.activeFocus
                controlRadius: Units.radius6
            }
            TextLine {
                anchors.horizontalCenter: parent.horizontalCenter
                y: chart.height - height
                width: implicitWidth
                visible: month.isLabelled
                text: chart.insights.monthLabels[month.index] ?? ""
                color: month.isLast ? Theme.ink : Theme.secondInk
                size: Units.type11
            }
        }
    }
}

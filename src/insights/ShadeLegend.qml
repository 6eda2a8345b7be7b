// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// The shades of the calendar, from few notes to many.
Row {
    id: legend

    required property list<real> shades ///< opacities; the first is for a day without notes
    required property bool english

    spacing: Units.space8

    Accessible.ignored: true // its numbers are read with each day

    TextLine {
        anchors.verticalCenter: parent.verticalCenter
        width: implicitWidth
        text: legend.english ? "Fewer" : "较少"
        color: Theme.secondInk
        size: Units.type11
    }
    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: Units.calendarGap

        Repeater {
            model: legend.shades

            Rectangle {
                required property int index
                required property real modelData

                width: Units.calendarCell
                height: width
                radius: Units.radius3
                color: index === 0 ? Theme.softFill : Theme.accent
                border.width: index === 0 ? Units.hairline : 0
                border.color: Theme.hairline
                opacity: modelData
            }
        }
    }
    TextLine {
        anchors.verticalCenter: parent.verticalCenter
        width: implicitWidth
        text: legend.english ? "More" : "较多"
        color: Theme.secondInk
        size: Units.type11
    }
}

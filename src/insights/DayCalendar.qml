// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Insights
import Vellumo.Ui

/// Notes per day, with a column for each week, as many as fit. The arrow keys and the pointer select a
/// day and show its number of notes; a click and Return lead to them.
FocusScope {
    id: calendar

    required property NotesInsights insights
    required property bool english

    readonly property int pitch: Units.calendarCell + Units.calendarGap
    readonly property int allWeeks: Math.ceil(calendar.insights.days.length / 7)
    readonly property int room: Math.floor((calendar.width - weekdays.width + Units.calendarGap)
                                           / calendar.pitch)
    readonly property int weeks: Math.min(calendar.allWeeks, Math.max(1, calendar.room))
    /// Index of the first day that fits.
    readonly property int first: (calendar.allWeeks - calendar.weeks) * 7
    readonly property int last: calendar.insights.days.length - 1
    readonly property int maxCount: calendar.maxPerDay()

    property int keyDay: -1
    property int pointedDay: -1
    readonly property int chosenDay: calendar.pointedDay >= 0 ? calendar.pointedDay
                                   : calendar.activeFocus ? calendar.keyDay : -1
    readonly property string figure: calendar.insights.dayText(
        calendar.chosenDay, calendar.insights.days[calendar.chosenDay] ?? 0, calendar.english)

    signal chosen(index: int)

    readonly property list<real> shades: [1, 0.4, 0.6, 0.8, 1]

    implicitHeight: legend.y + legend.height
    activeFocusOnTab: true

    Accessible.role: Accessible.List
    Accessible.name: calendar.english ? "Notes per day" : "每日笔记"
    Accessible.description: calendar.figure
    Accessible.focusable: true

    onActiveFocusChanged: {
        if (activeFocus && calendar.keyDay < calendar.first)
            calendar.keyDay = calendar.last
        if (activeFocus)
            announcer.announce(calendar.figure)
    }
    Keys.onReturnPressed: calendar.choose()
    Keys.onEnterPressed: calendar.choose()
    Keys.onPressed: event => {
        const by = event.key === Qt.Key_Left ? -7 : event.key === Qt.Key_Right ? 7
            : event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1
            : event.key === Qt.Key_Home ? -calendar.last : event.key === Qt.Key_End ? calendar.last
            : 0
        if (by === 0)
            return
        event.accepted = true
        calendar.pointedDay = -1
        calendar.keyDay = Math.max(calendar.first, Math.min(calendar.last, calendar.keyDay + by))
        announcer.announce(calendar.figure)
    }

    function choose(): void {
        if ((calendar.insights.days[calendar.chosenDay] ?? 0) > 0)
            calendar.chosen(calendar.chosenDay)
    }
    function maxPerDay(): int {
        // a single note does not get the strongest shade
        let max = 4
        for (let i = calendar.first; i <= calendar.last; ++i)
            max = Math.max(max, calendar.insights.days[i] ?? 0)
        return max
    }
    /// Returns a shade from 0 to 4 that distinguishes small numbers.
    function level(count: int): int {
        const level = Math.ceil(4 * Math.sqrt(count / calendar.maxCount) - 0.01)
        return count === 0 ? 0 : Math.max(1, Math.min(4, level))
    }

    Announcer { id: announcer }
    Column {
        id: weekdays

        y: grid.y
        width: Units.scaled(calendar.english ? 34 : 22)

        Repeater {
            model: 7

            Item {
                id: weekday

                required property int index

                width: weekdays.width
                height: calendar.pitch

                TextLine {
                    y: Math.round((Units.calendarCell - height) / 2)
                    width: parent.width
                    visible: weekday.index % 2 === 0
                    text: calendar.insights.weekdayNames[weekday.index]
                    color: Theme.secondInk
                    size: Units.type11
                }
            }
        }
    }
    Repeater {
        model: calendar.weeks

        TextLine {
            id: month

            required property int index

            x: grid.x + month.index * calendar.pitch
            // hidden in the last columns, where it would be cut
            visible: x + implicitWidth <= calendar.width
            text: calendar.insights.monthsBegun[calendar.first / 7 + month.index] ?? ""
            color: Theme.secondInk
            size: Units.type11
        }
    }

    ShadeLegend {
        id: legend
        anchors.right: parent.right
        y: grid.y + grid.height + Units.space8
        shades: calendar.shades
        english: calendar.english
    }
    Item {
        id: grid

        x: calendar.width - width + Units.calendarGap
        y: Math.round(Units.type11 * Units.cardLine) + Units.space4
        width: calendar.weeks * calendar.pitch
        height: 7 * calendar.pitch

        Repeater {
            model: Math.max(0, calendar.last - calendar.first + 1)

            Rectangle {
                id: cell

                required property int index

                readonly property int day: calendar.first + cell.index
                readonly property int count: calendar.insights.days[cell.day] ?? 0
                readonly property int level: calendar.level(cell.count)

                x: Math.floor(cell.index / 7) * calendar.pitch
                y: cell.index % 7 * calendar.pitch
                width: Units.calendarCell
                height: width
                radius: Units.radius3
                color: cell.level === 0 ? Theme.softFill : Theme.accent
                border.width: cell.level === 0 ? Units.hairline : 0
                border.color: Theme.hairline
                opacity: calendar.shades[cell.level]

                // screen readers skip days without notes
                Accessible.role: Accessible.ListItem
                Accessible.name: cell.count === 0 ? ""
                    : calendar.insights.dayText(cell.day, cell.count, calendar.english)
                Accessible.ignored: cell.count === 0
                Accessible.onPressAction: calendar.chosen(cell.day)
            }
        }
        Rectangle {
            readonly property int place: calendar.chosenDay - calendar.first
            readonly property int outset: Units.focusGap + Units.focusRing

            x: Math.floor(place / 7) * calendar.pitch - outset
            y: place % 7 * calendar.pitch - outset
            width: Units.calendarCell + 2 * outset
            height: width
            visible: place >= 0
            radius: Units.radius3 + outset
            color: "transparent"
            border.width: Units.focusRing
            border.color: Theme.ink
        }
        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onClicked: calendar.choose()
            onPositionChanged: mouse => {
                const day = calendar.first + Math.floor(mouse.x / calendar.pitch) * 7
                    + Math.min(6, Math.floor(mouse.y / calendar.pitch))
                calendar.pointedDay = day <= calendar.last ? day : -1
            }
            onExited: calendar.pointedDay = -1
        }
    }
}

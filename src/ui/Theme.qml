// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick
import Vellumo.Look

/// Every colour of the program. The island and the pill are dark always; ordinary windows follow
/// the desktop.
QtObject {
    id: theme

    readonly property bool dark: SystemLook.dark

    // the island and the pill
    readonly property color islandGround: Qt.rgba(0.055, 0.055, 0.055, 1)
    readonly property color islandGroundClear: Qt.rgba(0.055, 0.055, 0.055, 0)
    readonly property color pillHovered: Qt.rgba(0.125, 0.125, 0.125, 1)
    /// Separates the island and the pill from dark windows.
    readonly property color islandEdge: Qt.rgba(0.19, 0.19, 0.19, 1)
    readonly property color islandText: Qt.rgba(0.96, 0.96, 0.96, 1)
    readonly property color islandBody: Qt.rgba(0.85, 0.85, 0.85, 1)
    readonly property color islandSecondText: Qt.rgba(0.62, 0.62, 0.62, 1)
    readonly property color islandThirdText: Qt.rgba(0.45, 0.45, 0.45, 1)
    readonly property color islandHairline: Qt.rgba(0.17, 0.17, 0.17, 1)
    readonly property color islandField: Qt.rgba(0.125, 0.125, 0.125, 1)
    /// The edge of a field, at 3:1 on the ground and on the field.
    readonly property color islandFieldEdge: Qt.rgba(0.42, 0.42, 0.42, 1)
    readonly property color islandControl: Qt.rgba(0.155, 0.155, 0.155, 1)
    readonly property color islandControlHovered: Qt.rgba(0.23, 0.23, 0.23, 1)
    readonly property color islandControlPressed: Qt.rgba(0.29, 0.29, 0.29, 1)
    readonly property color skeleton: Qt.rgba(0.13, 0.13, 0.13, 1)
    readonly property color skeletonLight: Qt.rgba(0.235, 0.235, 0.235, 1)
    readonly property color card: Qt.rgba(1, 1, 1, 0.12)
    readonly property color cardHovered: Qt.rgba(1, 1, 1, 0.20)
    readonly property color islandAccent: Qt.rgba(0.18, 0.42, 1, 1)
    /// The accent at 22 % on the island's ground, so that overlapping pieces show no seam.
    readonly property color bubble: Qt.rgba(0.0825, 0.1353, 0.2629, 1)
    readonly property color bubbleText: Qt.rgba(0.86, 0.91, 1, 1)
    readonly property color amber: "#F5A524"
    readonly property color islandSelection: Qt.rgba(0.18, 0.42, 1, 0.55)

    // ordinary windows
    readonly property color ground: theme.dark ? "#131315" : "#F6F5F2"
    readonly property color surface: theme.dark ? "#1C1C20" : "#FFFFFF"
    readonly property color sideBar: theme.dark ? "#17171A" : "#EFEEEA"
    readonly property color ink: theme.dark ? "#F2F2F3" : "#17171A"
    readonly property color secondInk: theme.dark ? "#A0A0A9" : "#6A6A72"
    readonly property color thirdInk: theme.dark ? "#6E6E77" : "#9B9BA1"
    readonly property color hairline: theme.dark ? "#2A2A30" : "#E4E3DE"
    readonly property color softFill: theme.dark ? "#232328" : "#F1F0EC"
    readonly property color softFillHovered: theme.dark ? "#2C2C32" : "#E8E6E0"
    readonly property color thumb: theme.dark ? "#3A3A41" : "#CFCDC7"
    readonly property color inkHovered: theme.dark ? "#DADADC" : "#34343A"
    readonly property color good: theme.dark ? "#4CC38A" : "#1F9D61"
    readonly property color cautionText: theme.dark ? "#F5A524" : "#9A5B00"
    readonly property color bad: theme.dark ? "#FF8F85" : "#B3261E"
    readonly property color accent: "#2E6BFF"
    readonly property color accentSoft: theme.dark ? "#1B2747" : "#E3EBFF"
    readonly property color accentSoftText: theme.dark ? "#DCE6FF" : "#17336F"
    readonly property color selection: theme.dark ? "#2B4A99" : "#BFD2FF"
    /// Of the words of a search: in a line, and behind them in a text.
    readonly property color markInk: theme.dark ? "#8FB0FF" : "#1F4FCC"
    readonly property color mark: theme.dark ? "#5A4A12" : "#FFE69A"
    readonly property color scrim: theme.dark ? "#99000000" : "#5517171A"
    /// What stands out of a soft fill.
    readonly property color raised: theme.dark ? "#34343B" : "#FFFFFF"
    readonly property color surfaceHovered: theme.dark ? "#222227" : "#FBFAF8"
    /// The edge of fields and selection circles, at 3:1 or more on every ground.
    readonly property color fieldEdge: theme.dark ? "#6E6E77" : "#8A8984"
    readonly property color switchOff: theme.dark ? "#5A5A63" : "#8E8D88"
    readonly property color switchKnob: "#FFFFFF"

    // charts: the first is the accent, the rest together come last
    readonly property color chartSecond: theme.dark ? "#F2994A" : "#D9730D"
    readonly property color chartThird: theme.dark ? "#3FBFAD" : "#0F8B7D"
    readonly property color chartFourth: theme.dark ? "#B18CF0" : "#8757D6"
    readonly property color chartRest: theme.thirdInk

    // the first run
    readonly property color goodText: theme.dark ? "#4CC38A" : "#14784A"
    readonly property color accentPressed: "#2355CC"
    readonly property color accentGlow: Qt.rgba(0.18, 0.42, 1, 0.2)
    readonly property color accentText: "#FFFFFF"
    /// Of a button whose work is done.
    readonly property color doneFill: Qt.rgba(0.82, 0.82, 0.82, 1)
    readonly property color doneText: "#17171A"
}

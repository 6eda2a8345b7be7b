// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// The lowest rows of a PC's keyboard. It is not known which of two Option keys was pressed, so both
/// light up.
Item {
    id: keyboard

    required property var letters ///< texts of the keys beside Shift
    required property bool hasRightOption ///< otherwise AltGr
    required property bool isOptionDown
    property bool isLow: false ///< only the row that matters

    readonly property int gap: Units.space8
    readonly property int keyHeight: keyboard.isLow ? Units.scaled(54) : Units.scaled(60)
    /// The names need their room also where there is little.
    readonly property bool isNarrow: keyboard.width < Units.scaled(480)
    readonly property real unit: (keyboard.width - 2 * Units.space12 - 9 * keyboard.gap) / 10

    implicitHeight: rows.height + 2 * Units.space12

    Accessible.role: Accessible.Graphic
    Accessible.name: keyboard.isOptionDown ? "Option / Alt ●" : "Option / Alt"

    function span(units: real): real {
        return units * keyboard.unit + (units - 1) * keyboard.gap
    }

    Rectangle {
        anchors.fill: parent
        radius: Units.radius14
        color: Theme.softFill
        border.width: Units.hairline
        border.color: Theme.hairline
    }
    Column {
        id: rows

        x: Units.space12
        y: Units.space12
        spacing: keyboard.gap

        Row {
            visible: !keyboard.isLow
            spacing: keyboard.gap

            KeyCap {
                width: keyboard.span(2)
                height: Math.round(keyboard.keyHeight * 0.7)
                symbol: "⇧"
            }
            Repeater {
                model: keyboard.letters

                KeyCap {
                    required property string modelData

                    width: keyboard.span(1)
                    height: Math.round(keyboard.keyHeight * 0.7)
                    symbol: modelData
                }
            }
        }
        Row {
            spacing: keyboard.gap

            KeyCap {
                width: keyboard.span(1.3)
                height: keyboard.keyHeight
                symbol: "Ctrl"
            }
            KeyCap {
                width: keyboard.span(1.3)
                height: keyboard.keyHeight
                symbol: "Super"
            }
            KeyCap {
                width: keyboard.span(keyboard.isNarrow ? 2 : 1.6)
                height: keyboard.keyHeight
                symbol: "Alt"
                name: "Option"
                isLit: keyboard.isOptionDown
                isKeyToPress: true
            }
            KeyCap {
                width: keyboard.span(keyboard.isNarrow ? 2.1 : 2.9)
                height: keyboard.keyHeight
            }
            KeyCap {
                width: keyboard.span(keyboard.isNarrow ? 2 : 1.6)
                height: keyboard.keyHeight
                symbol: keyboard.hasRightOption ? "Alt" : "AltGr"
                name: keyboard.hasRightOption ? "Option" : ""
                isLit: keyboard.isOptionDown && keyboard.hasRightOption
                isKeyToPress: keyboard.hasRightOption
            }
            KeyCap {
                width: keyboard.span(1.3)
                height: keyboard.keyHeight
                symbol: "Ctrl"
            }
        }
    }
}

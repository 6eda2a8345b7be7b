// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick

/// One of a few, side by side. The arrow keys move the choice, which takes effect at once.
FocusScope {
    id: picker

    /// The label and the value of each segment.
    required property list<string> labels
    required property list<int> values
    required property string accessibleName
    property int value: -1

    readonly property int current: picker.placeOf(picker.value)

    signal chosen(value: int)

    implicitWidth: row.implicitWidth + 2 * Units.space2
    implicitHeight: Units.button
    activeFocusOnTab: true

    Accessible.role: Accessible.Grouping
    Accessible.name: picker.accessibleName
    Accessible.focusable: true

    function placeOf(value: int): int {
        for (let i = 0; i < picker.values.length; ++i) {
            if (picker.values[i] === value)
                return i
        }
        return -1
    }
    function move(by: int): void {
        const next = Math.max(0, Math.min(picker.values.length - 1, picker.current + by))
        if (next !== picker.current)
            picker.chosen(picker.values[next])
    }

    Keys.onLeftPressed: picker.move(-1)
    Keys.onRightPressed: picker.move(1)

    Rectangle {
        anchors.fill: parent
        radius: Units.radius10
        color: Theme.softFill
        border.width: Units.hairline
        border.color: Theme.hairline
    }
    FocusRing {
        shown: picker.activeFocus
    }
    Row {
        id: row

        x: Units.space2
        y: Units.space2

        Repeater {
            id: segments

            model: picker.labels

            Item {
                id: segment

                required property int index
                required property string modelData

                readonly property bool chosen: segment.index === picker.current

                width: Math.max(words.implicitWidth + 2 * Units.space16,
                                (picker.width - 2 * Units.space2) / picker.labels.length)
                height: picker.height - 2 * Units.space2

                Accessible.role: Accessible.RadioButton
                Accessible.name: segment.modelData
                Accessible.checkable: true
                Accessible.checked: segment.chosen
                Accessible.onPressAction: picker.chosen(picker.values[segment.index])

                Rectangle {
                    anchors.fill: parent
                    visible: segment.chosen
                    radius: Units.radius10 - Units.space2
                    color: Theme.raised
                    border.width: Units.hairline
                    border.color: Theme.fieldEdge
                }
                Text {
                    id: words

                    anchors.fill: parent
                    text: segment.modelData
                    textFormat: Text.PlainText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    color: segment.chosen || pointer.containsMouse ? Theme.ink : Theme.secondInk
                    font.pixelSize: Units.type13
                    font.weight: segment.chosen ? Font.DemiBold : Font.Normal
                    Accessible.ignored: true
                }
                MouseArea {
                    id: pointer

                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: picker.chosen(picker.values[segment.index])
                }
            }
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// What every button does, without a look of its own. A click leaves the keyboard where it is, so
/// the focus ring appears only after keyboard navigation.
Item {
    id: area

    required property string accessibleName
    property int reach: 0 ///< how far outside a click still counts
    readonly property bool hovered: area.enabled && pointer.containsMouse
    readonly property bool pressed: pointer.pressed && pointer.containsMouse

    signal clicked

    activeFocusOnTab: true
    opacity: area.enabled ? 1 : 0.45

    Accessible.role: Accessible.Button
    Accessible.name: area.accessibleName
    Accessible.focusable: true
    Accessible.onPressAction: area.clicked()

    Keys.onPressed: event => {
        const keys = [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter]
        event.accepted = keys.includes(event.key)
        if (event.accepted && !event.isAutoRepeat)
            area.clicked()
    }

    MouseArea {
        id: pointer

        anchors.fill: parent
        anchors.margins: -area.reach
        hoverEnabled: true
        onClicked: area.clicked()
    }
}

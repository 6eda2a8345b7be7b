// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Up to three quiet buttons, those with a text: side by side where they fit, else one below the
/// other.
Grid {
    id: choices

    required property int room ///< the width that they may take
    property alias firstText: first.text
    property alias firstName: first.objectName
    property bool isFirstOver: false ///< the first is needless, but keeps its place
    property alias secondText: second.text
    property alias secondName: second.objectName
    property alias thirdText: third.text
    property alias thirdName: third.objectName

    signal firstChosen
    signal secondChosen
    signal thirdChosen

    // a column without anything in it would still take its spacing
    columns: {
        const shown = [first, second, third].filter(button => button.visible)
        const needed = shown.reduce((sum, button) => sum + button.implicitWidth + spacing, -spacing)
        return shown.length > 1 && needed <= choices.room ? shown.length : 1
    }
    spacing: Units.space8
    horizontalItemAlignment: Grid.AlignHCenter

    TextButton {
        id: first

        visible: text.length > 0
        enabled: !choices.isFirstOver
        opacity: choices.isFirstOver ? 0 : 1
        Accessible.ignored: choices.isFirstOver
        width: Math.min(implicitWidth, choices.room)
        quiet: true
        onClicked: choices.firstChosen()
    }
    TextButton {
        id: second

        visible: text.length > 0
        width: Math.min(implicitWidth, choices.room)
        quiet: true
        onClicked: choices.secondChosen()
    }
    TextButton {
        id: third

        visible: text.length > 0
        width: Math.min(implicitWidth, choices.room)
        quiet: true
        onClicked: choices.thirdChosen()
    }
}

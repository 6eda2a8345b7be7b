// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A switch with its name and explanation.
Item {
    id: row

    required property string setting ///< object name of the switch
    required property string name
    required property string explanation
    required property bool checked

    signal toggled

    implicitHeight: Math.max(words.height, toggle.height)

    Column {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - toggle.width - Units.space24
        spacing: Units.space2

        Label {
            width: parent.width
            text: row.name
            wrapMode: Text.Wrap
            font.weight: Font.Medium
        }
        Label {
            objectName: row.setting + "Text"
            width: parent.width
            text: row.explanation
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
            lineFactor: Units.readingLine
        }
    }
    Switch {
        id: toggle

        objectName: row.setting
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        accessibleName: row.name
        checked: row.checked
        onClicked: row.toggled()
    }
}

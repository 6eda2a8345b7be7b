// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A promise, with its drawing.
Card {
    id: point

    required property string symbol
    required property string text

    height: Math.max(badge.height, words.height) + 2 * Units.space20

    Rectangle {
        id: badge

        anchors.left: parent.left
        anchors.leftMargin: Units.space20
        anchors.verticalCenter: parent.verticalCenter
        width: Units.scaled(36)
        height: width
        radius: Units.radius10
        color: Theme.accentSoft

        LineIcon {
            anchors.centerIn: parent
            width: Units.scaled(20)
            height: width
            name: ":/qt/qml/Vellumo/Onboarding/symbols/%1.svg".arg(point.symbol)
            color: Theme.accentSoftText
        }
    }
    Label {
        id: words

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: badge.right
        anchors.leftMargin: Units.space16
        anchors.right: parent.right
        anchors.rightMargin: Units.space20
        text: point.text
        wrapMode: Text.Wrap
        font.pixelSize: Units.type15
        lineFactor: Units.readingLine
    }
}

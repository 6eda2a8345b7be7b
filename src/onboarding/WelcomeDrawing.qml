// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A page with a selected phrase, and its explanation above.
Item {
    id: drawing

    readonly property int lineHeight: Units.scaled(8)

    implicitHeight: Units.onboardingDrawing
    Accessible.ignored: true

    Card {
        id: paper

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        width: Math.min(parent.width, 2 * Units.onboardingDrawing)
        height: parent.height - Units.scaled(20)

        Column {
            x: Units.scaled(24)
            y: Units.scaled(48)
            width: parent.width - 2 * x
            spacing: Units.scaled(12)

            Rectangle {
                width: parent.width
                height: drawing.lineHeight
                radius: height / 2
                color: Theme.hairline
            }
            Row {
                width: parent.width
                spacing: Units.space8

                Rectangle {
                    width: parent.width * 0.28
                    height: drawing.lineHeight
                    radius: height / 2
                    color: Theme.hairline
                }
                Rectangle {
                    width: parent.width * 0.34
                    height: drawing.lineHeight
                    radius: height / 2
                    color: Theme.accent
                }
                Rectangle {
                    width: parent.width - x
                    height: drawing.lineHeight
                    radius: height / 2
                    color: Theme.hairline
                }
            }
            Rectangle {
                width: parent.width * 0.6
                height: drawing.lineHeight
                radius: height / 2
                color: Theme.hairline
            }
        }
    }
    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.round(paper.width * 0.62)
        height: Units.scaled(48)
        radius: Units.radius14
        color: Theme.islandGround
        border.width: Units.hairline
        border.color: Theme.islandHairline

        Text {
            x: Units.scaled(16)
            height: parent.height
            text: "✦"
            textFormat: Text.PlainText
            verticalAlignment: Text.AlignVCenter
            color: Theme.islandText
            font.pixelSize: Units.type15
            Accessible.ignored: true
        }
        Column {
            x: Units.scaled(48)
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x - Units.scaled(16)
            spacing: Units.scaled(8)

            Rectangle {
                width: parent.width
                height: drawing.lineHeight - Units.space2
                radius: height / 2
                color: Theme.islandSecondText
            }
            Rectangle {
                width: parent.width * 0.7
                height: drawing.lineHeight - Units.space2
                radius: height / 2
                color: Theme.islandThirdText
            }
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Explains where notes are kept, while the real pill draws attention.
CardFrame {
    id: card

    title: card.english ? "Your notes live here" : "你的笔记都在这里"
    subtitle: card.english ? "Every explanation is saved. Click “Notes” on your screen to see them all."
                           : "每次解释都会存下来。点一下屏幕上的“Notes”，就能看到全部。"
    continueName: "notesContinueButton"
    drawsContinue: card.flow.isDemoOver

    onProceeded: card.flow.advance()

    Card {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, 2 * Units.onboardingDrawing)
        height: card.isCramped ? pill.height + 2 * Units.space20
                               : Units.onboardingDrawing + Units.space48

        Column {
            visible: !card.isCramped
            x: Units.scaled(24)
            y: Units.scaled(24)
            width: parent.width - 2 * x
            spacing: Units.scaled(12)

            Repeater {
                model: [1, 0.92, 0.97, 0.55]

                Rectangle {
                    required property real modelData

                    width: parent.width * modelData
                    height: Units.scaled(8)
                    radius: height / 2
                    color: Theme.hairline
                }
            }
        }
        SamplePill {
            id: pill

            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: Units.space20
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A follow-up question and its answer.
Item {
    id: exchange

    required property string question
    required property string answer
    property string marked: ""

    height: reply.y + reply.height + Units.space4

    Rectangle {
        id: bubble

        anchors.right: parent.right
        width: asked.width + 2 * Units.space12
        height: asked.height + 2 * Units.space8
        radius: Units.radius14
        color: Theme.accentSoft

        Rectangle {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            width: Units.radius14
            height: width
            radius: Units.space4
            color: Theme.accentSoft
        }
        NoteText {
            id: asked

            anchors.centerIn: parent
            width: Math.min(Math.ceil(measure.implicitWidth) + 1,
                            Math.round(exchange.width * 0.85) - 2 * Units.space12)
            text: exchange.question
            marked: exchange.marked
            color: Theme.accentSoftText
            font.pixelSize: Units.type13
        }
        Text {
            id: measure

            visible: false
            text: exchange.question
            textFormat: Text.PlainText
            font: asked.font
        }
    }
    NoteText {
        id: reply

        anchors.top: bubble.bottom
        anchors.topMargin: Units.space12
        width: parent.width
        text: exchange.answer
        marked: exchange.marked
        paragraphGap: Units.space4
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// One question, in a bubble at the right, and its answer below.
Item {
    id: row

    required property string question
    required property string answer
    required property bool pending
    required property bool failed
    required property bool kept
    required property BilingualText texts

    implicitHeight: row.pending ? dots.y + dots.height
                  : row.kept ? reply.y + reply.height : failure.y + failure.height

    Item {
        id: bubble

        anchors.right: parent.right
        width: questionText.width + 2 * Units.space12
        height: questionText.height + Units.space12

        Rectangle {
            anchors.fill: parent
            radius: Units.radius14
            color: Theme.bubble
        }
        // the corner that points to the asker
        Rectangle {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            width: Units.radius14
            height: Units.radius14
            radius: Units.space4
            color: Theme.bubble
        }
        ReadingText {
            id: questionText

            anchors.left: parent.left
            anchors.leftMargin: Units.space12
            anchors.top: parent.top
            anchors.topMargin: Units.space4
            width: Math.min(Math.ceil(measure.implicitWidth),
                            Math.round(row.width * 0.85) - 2 * Units.space12)
            text: row.question
            color: Theme.bubbleText
            font.pixelSize: Units.type13
        }
        Text {
            id: measure
            visible: false
            text: row.question
            textFormat: Text.PlainText
            font: questionText.font
        }
    }

    ReadingText {
        id: reply

        objectName: "answer"
        anchors.top: bubble.bottom
        anchors.topMargin: Units.space12
        width: parent.width
        visible: !row.pending
        text: row.answer
        color: row.failed ? Theme.islandSecondText : Theme.islandBody
        font.pixelSize: Units.type15
        paragraphGap: Units.space4
    }

    Item {
        id: failure

        anchors.top: reply.bottom
        anchors.topMargin: Units.space4
        width: parent.width
        height: note.height
        visible: !row.kept && !row.pending

        Rectangle {
            anchors.left: parent.left
            anchors.verticalCenter: note.verticalCenter
            width: Units.dot
            height: Units.dot
            radius: Units.dot / 2
            color: Theme.amber
        }
        Text {
            id: note

            objectName: "failureNote"
            anchors.left: parent.left
            anchors.leftMargin: Units.space12 + Units.space2
            anchors.right: parent.right
            text: row.failed ? (row.texts.english ? "No answer — not kept with your note."
                                                  : "没有得到回答，不会存进笔记。")
                             : (row.texts.english ? "Not kept with your note: a question before it got no answer."
                                                  : "前面有问题没有得到回答，所以不会存进笔记。")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.islandSecondText
            font.pixelSize: Units.type12

            Accessible.role: Accessible.StaticText
            Accessible.name: note.text
        }
    }

    ThinkingDots {
        id: dots

        anchors.top: bubble.bottom
        anchors.topMargin: Units.space12
        anchors.left: parent.left
        visible: row.pending
        accessibleName: row.texts.english ? "Waiting for the answer" : "正在等待回答"
    }
}

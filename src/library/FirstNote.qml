// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// Explains how the first note is made, in place of an empty list.
Item {
    id: first

    required property bool english

    readonly property list<string> steps: first.english
        ? ["Select a word or a sentence, in any window.",
           "Tap Option (the Alt key) twice.",
           "Read the explanation. When you close it, it is saved here."]
        : ["在任意窗口选中一个词或一句话。",
           "按两下 Option（Alt 键）。",
           "读完关闭解释，它就会存为笔记。"]

    implicitHeight: column.height

    Column {
        id: column

        width: parent.width
        spacing: Units.space8

        EmptyState {
            width: parent.width
            icon: "notes"
            title: first.english ? "No notes yet"
                                 : "还没有笔记"
            text: first.english ? "Every explanation is saved here, with the place where you read it."
                                : "你查过的内容、出处和解释都会保存在这里。"
        }
        Item {
            width: 1
            height: Units.space8
        }
        Card {
            width: parent.width
            height: list.height + 2 * Units.space20

            Column {
                id: list

                anchors.top: parent.top
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.margins: Units.space20
                spacing: Units.space12

                Repeater {
                    model: first.steps

                    Item {
                        id: step

                        required property int index
                        required property string modelData

                        width: list.width
                        height: Math.max(mark.height, words.height)

                        Rectangle {
                            id: mark

                            anchors.left: parent.left
                            width: Units.scaled(22)
                            height: width
                            radius: width / 2
                            color: Theme.accentSoft

                            Text {
                                anchors.fill: parent
                                text: step.index + 1
                                textFormat: Text.PlainText
                                horizontalAlignment: Text.AlignHCenter
                                verticalAlignment: Text.AlignVCenter
                                color: Theme.accentSoftText
                                font.pixelSize: Units.type12
                                font.weight: Font.DemiBold
                            }
                        }
                        Label {
                            id: words

                            anchors.left: mark.right
                            anchors.leftMargin: Units.space12
                            anchors.right: parent.right
                            y: Math.max(0, (mark.height - lineHeight) / 2)
                            text: step.modelData
                            wrapMode: Text.Wrap
                            lineFactor: Units.readingLine
                        }
                    }
                }
            }
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// Whether vellumo starts with the session.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    title: section.english ? "Start" : "启动"

    Item {
        width: parent.width
        height: Math.max(words.height, toggle.height)

        Column {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - toggle.width - Units.space24
            spacing: Units.space2

            Label {
                id: name

                width: parent.width
                text: section.english ? "Start vellumo when I log in" : "登录时启动 vellumo"
                wrapMode: Text.Wrap
                font.weight: Font.Medium
            }
            Label {
                objectName: "loginText"
                width: parent.width
                text: section.computer.loginText.length > 0 ? section.computer.loginText
                    : section.english ? "In the background, without a window."
                                      : "在后台运行,不打开窗口。"
                wrapMode: Text.Wrap
                color: Theme.secondInk
                font.pixelSize: Units.type12
                lineFactor: Units.readingLine
            }
        }
        Switch {
            id: toggle

            objectName: "startsAtLogin"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            accessibleName: name.text
            checked: section.computer.startsAtLogin
            onClicked: section.computer.setStartsAtLogin(!section.computer.startsAtLogin)
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// What vellumo does by itself: starting with the session, showing the pill, reading by copying.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    title: section.english ? "Options" : "选项"

    SwitchRow {
        width: parent.width
        setting: "startsAtLogin"
        name: section.english ? "Start vellumo when I log in" : "登录系统时启动 vellumo"
        explanation: section.computer.loginText.length > 0 ? section.computer.loginText
            : section.english ? "In the background, without a window."
                              : "在后台运行，不打开窗口。"
        checked: section.computer.startsAtLogin
        onToggled: section.computer.setStartsAtLogin(!section.computer.startsAtLogin)
    }
    SwitchRow {
        width: parent.width
        setting: "showsPill"
        name: section.english ? "Show “Notes” on the screen" : "在屏幕上显示“Notes”"
        explanation: section.english
            ? "The pill with your latest notes, above other windows. Drag it where you like."
            : "悬浮在其他窗口之上，点击可查看最近的笔记，可以拖到任意位置。"
        checked: section.computer.showsPill
        onToggled: section.computer.setShowsPill(!section.computer.showsPill)
    }
    SwitchRow {
        width: parent.width
        setting: "readsByCopying"
        name: section.english ? "Copy where nothing else answers" : "读不到时改用复制"
        explanation: section.computer.copyingText
        checked: section.computer.readsByCopying
        onToggled: section.computer.setReadsByCopying(!section.computer.readsByCopying)
    }
}

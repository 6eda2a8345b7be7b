// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The setting for starting with the session.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    title: section.english ? "Start" : "启动"

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
}

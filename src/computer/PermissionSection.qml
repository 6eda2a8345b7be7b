// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The permission to read selections, with buttons to grant and to withdraw it.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    readonly property bool isTrusted: section.computer.isTrusted

    title: section.english ? "Permission" : "权限"

    ActionLine {
        width: parent.width
        lineName: "permission"
        status: section.isTrusted ? StatusLine.Good : StatusLine.Bad
        title: section.isTrusted
            ? (section.english ? "vellumo may read what you select" : "vellumo 可以读取选中的文字")
            : (section.english ? "vellumo may not read what you select"
                               : "vellumo 不能读取选中的文字")
        text: section.isTrusted
            ? (section.english ? "Only when you double-tap Option (Alt), and never from password fields. Of the keyboard it sees the modifier keys alone."
                               : "只在你双击 Option(Alt)时读取,从不读取密码框。键盘上只看修饰键。")
            : (section.english ? "A double tap explains nothing until you allow it. Other programs keep the desktop's accessibility service."
                               : "在你允许之前,双击不会解释任何内容。其他程序仍可使用桌面的辅助功能服务。")
        buttonName: section.isTrusted ? "withdraw" : "allow"
        primary: !section.isTrusted
        buttonText: section.isTrusted ? (section.english ? "Take it back" : "收回权限")
                                      : (section.english ? "Allow" : "允许")
        onActed: {
            if (section.isTrusted)
                section.computer.withdraw()
            else
                section.computer.allow()
        }
    }
}

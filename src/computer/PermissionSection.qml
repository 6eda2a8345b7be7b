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

    Item {
        readonly property bool fits: width - button.width - Units.space24 >= Units.scaled(280)

        width: parent.width
        height: fits ? Math.max(status.height, button.height)
                     : status.height + Units.space12 + button.height

        StatusLine {
            id: status

            objectName: "permission"
            anchors.left: parent.left
            y: parent.fits ? Math.round((parent.height - height) / 2) : 0
            width: parent.fits ? parent.width - button.width - Units.space24 : parent.width
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
        }
        TextButton {
            id: button

            objectName: section.isTrusted ? "withdraw" : "allow"
            anchors.left: parent.left
            anchors.leftMargin: parent.fits ? parent.width - width
                                            : Units.statusDot + Units.space12
            y: parent.fits ? Math.round((parent.height - height) / 2) : parent.height - height
            primary: !section.isTrusted
            text: section.isTrusted ? (section.english ? "Take it back" : "收回权限")
                                    : (section.english ? "Allow" : "允许")
            onClicked: {
                if (section.isTrusted)
                    section.computer.withdraw()
                else
                    section.computer.allow()
            }
        }
    }
}

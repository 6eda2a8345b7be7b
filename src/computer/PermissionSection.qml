// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The permission to read selections, and where double taps work, with buttons that change either.
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
            ? (section.english ? "vellumo can read your selections" : "vellumo 可以读取选中的文字")
            : (section.english ? "vellumo cannot read your selections"
                               : "vellumo 不能读取选中的文字")
        text: section.isTrusted
            ? (section.english ? "Only when you double-tap Option (Alt), and never in password fields. Of the keyboard, it sees only the modifier keys."
                               : "只在你按两下 Option（Alt）时读取，从不读取密码框。键盘方面只检测修饰键。")
            : (section.english ? "Double-tapping explains nothing until you allow it. Other programs are not affected."
                               : "允许之前，按两下不会给出解释。其他程序不受影响。")
        buttonName: section.isTrusted ? "withdraw" : "allow"
        primary: !section.isTrusted
        buttonText: section.isTrusted ? (section.english ? "Withdraw permission" : "收回权限")
                                      : (section.english ? "Allow" : "允许")
        onActed: {
            if (section.isTrusted)
                section.computer.withdraw()
            else
                section.computer.allow()
        }
    }
    ActionLine {
        readonly property TapReach taps: section.computer.taps

        width: parent.width
        lineName: "session"
        status: taps.isEverywhere ? StatusLine.Good
              : taps.actionText.length > 0 ? StatusLine.Limited : StatusLine.Neutral
        stateName: taps.isEverywhere ? (section.english ? "works" : "可用")
                                     : (section.english ? "limited" : "受限")
        title: taps.title
        text: taps.text
        buttonName: "changeReach"
        buttonText: taps.actionText
        primary: !taps.isUndo
        canAct: !taps.isBusy
        onActed: taps.act()
    }
}

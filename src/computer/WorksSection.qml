// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The features of this desktop that vellumo uses, and the consequences of missing ones.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    readonly property DesktopReporting desktop: section.computer.desktop
    readonly property int keyring: section.desktop.keyring

    title: section.english ? "What works here" : "这里能用什么"

    component Fact: StatusLine {
        id: fact

        required property bool english
        property bool good: true

        width: parent ? parent.width : 0
        status: fact.good ? StatusLine.Good : StatusLine.Limited
        stateName: fact.status === StatusLine.Neutral ? (fact.english ? "not known yet" : "尚不清楚")
                 : fact.good ? (fact.english ? "works" : "可用")
                             : (fact.english ? "limited" : "受限")
    }

    ActionLine {
        readonly property TapReach taps: section.computer.taps

        width: parent.width
        lineName: "session"
        status: taps.isEverywhere ? StatusLine.Good : StatusLine.Limited
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
    Fact {
        english: section.english
        objectName: "accessibility"
        good: section.desktop.isConnected
        status: good ? StatusLine.Good
              : section.desktop.isConnecting ? StatusLine.Neutral : StatusLine.Limited
        title: section.english ? "Accessibility service" : "辅助功能服务"
        text: good
            ? (section.english ? "Applications tell what is selected in them. Those that do not are asked for what they publish when you select."
                               : "应用会告知其中选中了什么。不支持的应用,则读取它们在选中时公开的内容。")
            : !section.computer.isTrusted
                ? (section.english ? "Waits for your permission above." : "等待上面的权限。")
            : section.desktop.isConnecting
                ? (section.english ? "Connecting…" : "正在连接…")
                : (section.english ? "It does not answer. Log in again, or look whether at-spi2-core is installed."
                                   : "没有回应。请重新登录,或检查是否安装了 at-spi2-core。")
    }
    Fact {
        english: section.english
        objectName: "browsers"
        title: section.english ? "Addresses of pages" : "网页地址"
        text: section.computer.browsersText
    }
    Fact {
        english: section.english
        objectName: "keyring"
        good: section.keyring === DesktopReporting.Open
        status: section.keyring === DesktopReporting.Asking ? StatusLine.Neutral
              : good ? StatusLine.Good : StatusLine.Limited
        title: section.english ? "Keyring" : "密钥环"
        text: section.keyring === DesktopReporting.Open
                ? (section.english ? "Keeps your session and the key of your service."
                                   : "保存你的登录状态和服务密钥。")
            : section.keyring === DesktopReporting.Locked
                ? (section.english ? "It is locked. What lies in it is read as soon as you unlock it."
                                   : "已锁定。解锁后会立即读取其中的内容。")
            : section.keyring === DesktopReporting.Absent
                ? (section.english ? "There is none, such as gnome-keyring or KWallet: a sign-in and a key last until vellumo ends."
                                   : "没有可用的密钥环(如 gnome-keyring 或 KWallet):登录状态和密钥只保留到 vellumo 退出。")
                : (section.english ? "Asking…" : "正在询问…")
    }
    Fact {
        english: section.english
        objectName: "tray"
        good: section.desktop.hasTray
        title: section.english ? "Icon in the panel" : "面板图标"
        text: good ? (section.english ? "A click on it opens this window." : "点击即可打开这个窗口。")
                   : (section.english ? "This desktop shows none. Start vellumo once more to open this window."
                                      : "这个桌面不显示图标。再次启动 vellumo 即可打开这个窗口。")
    }
    Fact {
        english: section.english
        objectName: "compositor"
        good: section.desktop.hasCompositor
        title: section.english ? "Round corners and shadows" : "圆角与阴影"
        text: good ? (section.english ? "A compositor blends windows." : "合成器正在运行。")
                   : (section.english ? "Without a compositor the panel's corners are a little rough and it casts no shadow; everything else is the same."
                                      : "没有合成器,面板的圆角略显粗糙,也没有阴影,其余不受影响。")
    }
}

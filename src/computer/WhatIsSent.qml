// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// Describes which data leaves this computer.
Column {
    id: sent

    required property ServiceForm service
    required property bool english

    spacing: Units.space8

    component Line: Label {
        width: parent ? parent.width : 0
        wrapMode: Text.Wrap
        color: Theme.secondInk
        font.pixelSize: Units.type12
        lineFactor: Units.readingLine
    }

    Label {
        width: parent.width
        text: sent.english ? "What leaves this computer" : "哪些内容会离开这台电脑"
        wrapMode: Text.Wrap
        font.weight: Font.Medium
    }
    Line {
        objectName: "sentToService"
        text: sent.service.sentText
    }
    Line {
        visible: sent.service.sendsToken
        text: sent.english ? "While you are signed in, a token identifying your account is sent along."
                           : "登录账号期间，还会附带标识该账号的令牌。"
    }
    Line {
        text: sent.english ? "Notes stay on this computer. While you are signed in, what you selected, the explanation and your follow-ups are also copied to your account; the page or window is not."
                           : "笔记保存在这台电脑上。登录账号期间，原文、解释和追问也会复制到你的账号；所读的网页或窗口不会。"
    }
}

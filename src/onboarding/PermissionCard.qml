// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Asks for the permission to read selected text, and shows what the system will say.
CardFrame {
    id: card

    title: card.english ? "Set up vellumo on your computer" : "在你的 Mac 上设置 vellumo"
    continueName: "permissionContinueButton"
    canContinue: card.flow.isTrusted
    quietName: "openSettings"
    quietText: card.english ? "No dialog? Open System Settings →" : "没弹出?打开系统设置 →"
    secondQuietName: "notNow"
    secondQuietText: card.flow.isTrusted ? "" : (card.english ? "Not now" : "以后再说")

    onProceeded: card.flow.advance()
    onSkipped: card.flow.openAccessibilitySettings()
    onSkippedSecond: card.flow.advance()

    Card {
        width: parent.width
        height: Math.max(step.height, allow.height) + 2 * Units.space16

        Label {
            id: step

            anchors.verticalCenter: parent.verticalCenter
            anchors.left: parent.left
            anchors.leftMargin: Units.space20
            anchors.right: allow.left
            anchors.rightMargin: Units.space16
            text: card.english ? "Allow vellumo to read the text you select"
                               : "允许 vellumo 读取你选中的文字"
            wrapMode: Text.Wrap
            font.pixelSize: Units.type15
            lineFactor: Units.readingLine
        }
        AllowButton {
            id: allow

            objectName: "permissionAllowButton"
            anchors.right: parent.right
            anchors.rightMargin: Units.space16
            anchors.verticalCenter: parent.verticalCenter
            text: card.flow.isTrusted ? (card.english ? "✓ Enabled" : "✓ 已开启")
                                      : (card.english ? "Allow" : "允许")
            enabled: !card.flow.isTrusted
            onClicked: card.flow.allow()
        }
    }
    SystemDialogDrawing {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, Units.scaled(420))
        message: card.english
            ? "“vellumo” would like to control this computer using accessibility features."
            : "“vellumo” 想要使用辅助功能控制这台电脑。"
        detail: card.english ? "Grant access in System Settings → Privacy & Security."
                             : "在 系统设置 → 隐私与安全性 中允许。"
        buttonText: card.english ? "Open System Settings" : "打开系统设置"
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Welcomes, and lets the user sign in or go on without. Where there is no service to sign in to, it
/// leads on without an account.
CardFrame {
    id: card

    centered: true
    title: card.english ? "Welcome to vellumo" : "欢迎使用 vellumo"
    subtitle: {
        if (card.flow.awaitsPage)
            return card.english ? "Waiting for the browser…" : "等待浏览器完成登录…"
        const use = card.english
            ? "Select what you don't understand, double-tap Option, and read on."
            : "选中看不懂的文字，按两下 Option，继续读下去。"
        if (card.flow.offersAccount)
            return use
        return use + "\n" + (card.english ? "Your notes stay on this computer."
                                          : "笔记只保存在这台电脑上。")
    }
    continueName: card.flow.offersAccount ? "signInButton" : "start"
    continueIcon: card.flow.isOpeningBrowser || !card.flow.offersAccount ? "" : "google"
    canContinue: !card.flow.isOpeningBrowser
    continueText: {
        if (!card.flow.offersAccount)
            return card.english ? "Get started" : "开始使用"
        if (card.flow.isOpeningBrowser)
            return card.english ? "Opening browser…" : "正在打开浏览器登录…"
        return card.english ? "Continue with Google" : "使用 Google 继续"
    }
    reportsState: true
    error: card.flow.signInError
    keepsErrorLine: true
    quietName: "openPageAgain"
    quietText: {
        if (!card.flow.awaitsPage)
            return ""
        return card.english ? "Open the page again" : "重新打开网页"
    }
    secondQuietName: "cancelSignIn"
    secondQuietText: !card.flow.isOpeningBrowser ? "" : card.english ? "Cancel" : "取消"
    thirdQuietName: "withoutAccount"
    thirdQuietText: {
        if (!card.flow.offersAccount)
            return ""
        if (card.flow.isSignedIn)
            return card.english ? "Continue anyway" : "仍然继续"
        return card.english ? "Use without an account" : "不登录,直接使用"
    }

    onProceeded: {
        if (card.flow.offersAccount)
            card.flow.signIn()
        else
            card.flow.useWithoutAccount()
    }
    onSkipped: card.flow.openSignInPageAgain()
    onSkippedSecond: card.flow.cancelSignIn()
    onSkippedThird: card.flow.useWithoutAccount()

    WelcomeDrawing {
        width: parent.width
        visible: !card.isCramped
    }
}

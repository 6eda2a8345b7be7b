// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Account
import Vellumo.Sync
import Vellumo.Ui

/// Who is signed in and how the notes travel; or that they stay here, and the way to sign in.
Item {
    id: corner

    required property AuthService auth
    required property SyncReporting sync ///< null where nothing is synced
    required property bool english

    readonly property bool showsSync: corner.auth.isSignedIn && corner.sync !== null

    signal signInAsked

    height: column.height

    function syncText(): string {
        if (corner.sync.arriving > 0)
            return corner.count(corner.sync.arriving, "One note on its way", "%1 notes on their way",
                                "%1 条笔记正在同步过来")
        if (corner.sync.isSyncing)
            return corner.english ? "Syncing…" : "正在同步…"
        const trouble = corner.problemText() || corner.auth.problem
        if (corner.sync.pending === 0)
            return trouble || corner.upToDateText()
        const left = corner.count(corner.sync.pending, "One note still to sync",
                                  "%1 notes still to sync", "还有 %1 条笔记待同步")
        return trouble ? trouble + "\n" + left : left
    }
    function upToDateText(): string {
        const time = corner.sync.lastFetched
        if (isNaN(time.getTime()))
            return corner.english ? "All notes uploaded" : "笔记已全部上传"
        return (corner.english ? "Synced at %1" : "%1 已同步").arg(Qt.formatTime(time, "HH:mm"))
    }
    function count(number: int, one: string, many: string, chinese: string): string {
        return !corner.english ? chinese.arg(number) : number === 1 ? one : many.arg(number)
    }
    function problemText(): string {
        switch (corner.sync.problem) {
        case SyncError.None:
            return ""
        case SyncError.NotConfigured:
            return corner.english ? "No sync service is set up here" : "这里没有设置同步服务"
        case SyncError.SignedOut:
            return corner.english ? "Could not sync. Please sign in again"
                                  : "同步失败,请重新登录"
        case SyncError.Unreachable:
            return corner.english ? "Could not sync. No connection" : "同步失败,无法连接"
        case SyncError.Refused:
            return corner.english ? "Could not sync. The service refused" : "同步失败,服务拒绝了请求"
        case SyncError.Untrusted:
            return corner.english ? "Could not sync. The connection is not trusted"
                                  : "同步失败,连接不可信"
        case SyncError.AddressNotAllowed:
            return corner.english ? "Could not sync. The service's address is not allowed"
                                  : "同步失败,服务地址不可用"
        case SyncError.ListTooLarge:
            return corner.english ? "Could not sync. The account has too much to fetch"
                                  : "同步失败,账号里的内容太多"
        case SyncError.NoteTooLarge:
            return corner.english ? "Could not sync. A note is too large" : "同步失败,有一条笔记太大"
        default:
            return corner.english ? "Could not sync. The answer was unreadable"
                                  : "同步失败,无法读取服务的回答"
        }
    }

    Column {
        id: column

        width: parent.width
        spacing: Units.space4

        Rectangle {
            width: parent.width
            height: Units.hairline
            color: Theme.hairline
        }
        Item {
            width: 1
            height: Units.space4
        }
        Label {
            objectName: "account"
            x: Units.space12
            width: parent.width - 2 * x
            text: corner.auth.isSignedIn
                ? (corner.auth.email.length > 0 ? corner.auth.email
                                                : (corner.english ? "Signed in" : "已登录"))
                : (corner.english ? "Notes stay on this computer" : "笔记只保存在这台电脑上")
            elide: corner.auth.isSignedIn ? Text.ElideMiddle : Text.ElideNone
            wrapMode: corner.auth.isSignedIn ? Text.NoWrap : Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
        }
        Item {
            x: Units.space12
            width: parent.width - 2 * x
            height: state.height
            visible: corner.showsSync

            Rectangle {
                y: (state.lineHeight - height) / 2
                width: Units.statusDot
                height: width
                radius: width / 2
                color: !corner.showsSync || corner.sync.isSyncing
                    ? Theme.thirdInk
                    : corner.sync.pending > 0 || corner.sync.problem !== SyncError.None
                        || corner.auth.problem.length > 0
                    ? Theme.amber : Theme.good
            }
            Label {
                id: state

                objectName: "syncState"
                x: Units.statusDot + Units.space8
                width: parent.width - x
                text: corner.showsSync ? corner.syncText() : ""
                wrapMode: Text.Wrap
                color: Theme.secondInk
                font.pixelSize: Units.type12
            }
        }
        Flow {
            width: parent.width

            TextButton {
                objectName: "uploadNotes"
                visible: corner.showsSync && corner.sync.isWithheld
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: corner.showsSync ? corner.count(corner.sync.pending, "Upload 1 note",
                                                      "Upload %1 notes", "上传 %1 条笔记") : ""
                onClicked: corner.sync.uploadWithheld()
            }
            TextButton {
                objectName: "syncNow"
                visible: corner.showsSync && !corner.sync.isWithheld
                enabled: corner.showsSync && !corner.sync.isSyncing
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: corner.english ? "Sync now" : "立即同步"
                onClicked: corner.sync.syncNow()
            }
            TextButton {
                objectName: corner.auth.isSignedIn ? "signOut" : "goToSignIn"
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: corner.auth.isSignedIn ? (corner.english ? "Sign out" : "退出登录")
                                             : (corner.english ? "Sign in" : "登录")
                onClicked: {
                    if (corner.auth.isSignedIn)
                        corner.auth.signOut()
                    else
                        corner.signInAsked()
                }
            }
        }
    }
}

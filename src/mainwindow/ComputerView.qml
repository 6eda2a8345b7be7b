// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.MainWindow
import Vellumo.Ui

/// The page of this computer, with what the window knows of the notes' way to the account.
ComputerPage {
    id: view

    required property MainWindowModel main

    readonly property SyncReporting sync: view.main.sync

    computer: view.main.computer
    syncsNotes: view.main.auth.isSignedIn && view.sync !== null
    syncTime: view.syncsNotes ? view.sync.problemTime : new Date(NaN)
    syncProblem: view.syncsNotes ? view.problemText(view.sync.problem) : ""

    function problemText(problem: int): string {
        switch (problem) {
        case SyncReporting.NotConfigured:
            return view.english ? "This installation knows no place to sync with."
                                : "这个安装没有配置同步服务。"
        case SyncReporting.SignedOut:
            return view.english ? "Your session is not accepted any more. Sign out and in again; notes that have not travelled yet stay here meanwhile."
                                : "登录状态已失效。请退出后重新登录;还没同步的笔记会先保留在这里。"
        case SyncReporting.Unreachable:
            return view.english ? "No answer came. Check the connection, then choose “Sync now”."
                                : "没有收到回应。请检查网络,然后点“立即同步”。"
        case SyncReporting.Refused:
            return view.english ? "The account's service did not take the notes. They stay here; try “Sync now” later."
                                : "账号服务没有接收笔记。笔记仍在这里;请稍后再点“立即同步”。"
        case SyncReporting.Unreadable:
            return view.english ? "What answered is not the account's service. A network that asks for a login first may be in the way."
                                : "回应的不是账号服务。可能是需要先登录的网络拦截了请求。"
        default:
            return ""
        }
    }
}

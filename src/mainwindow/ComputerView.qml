// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.MainWindow
import Vellumo.Sync
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
        case SyncError.NotConfigured:
            return view.english ? "This installation knows no place to sync with."
                                : "这个安装没有配置同步服务。"
        case SyncError.SignedOut:
            return view.english ? "Your session is not accepted any more. Sign out and in again; notes that have not travelled yet stay here meanwhile."
                                : "登录状态已失效。请退出后重新登录;还没同步的笔记会先保留在这里。"
        case SyncError.Unreachable:
            return view.english ? "No answer came. Check the connection, then choose “Sync now”."
                                : "没有收到回应。请检查网络,然后点“立即同步”。"
        case SyncError.Refused:
            return view.english ? "The account's service did not take the notes. They stay here; try “Sync now” later."
                                : "账号服务没有接收笔记。笔记仍在这里;请稍后再点“立即同步”。"
        case SyncError.Unreadable:
            return view.english ? "What answered is not the account's service. A network that asks for a login first may be in the way."
                                : "回应的不是账号服务。可能是需要先登录的网络拦截了请求。"
        case SyncError.Untrusted:
            return view.english ? "No trusted connection: the certificate of the account's service is not known here. Check this computer's clock, and whether something on the network reads along. Notes stay here meanwhile."
                                : "无法建立可信的连接:这台电脑不认可账号服务的证书。请检查系统时间,以及网络中是否有设备在拦截。笔记会先保留在这里。"
        case SyncError.AddressNotAllowed:
            return view.english ? "Not sent: the address of the account's service must be a web address that begins with https. Check VELLUMO_DATACONNECT_URL and VELLUMO_SECURETOKEN_URL, in the environment or in Info.json."
                                : "没有发送:账号服务的地址必须是以 https 开头的网址。请检查环境变量或 Info.json 里的 VELLUMO_DATACONNECT_URL 和 VELLUMO_SECURETOKEN_URL。"
        case SyncError.ListTooLarge:
            return view.english ? "The account has more than vellumo reads at once (32 MiB), so nothing new was taken over. Delete notes there that you do not need."
                                : "账号里的笔记超过了 vellumo 一次能读取的大小(32 MiB),所以没有取回新的内容。请在那里删除不需要的笔记。"
        case SyncError.NoteTooLarge:
            return view.english ? "A note is larger than the account's service takes. It stays on this computer."
                                : "有一条笔记太大,账号服务不接收。它会保留在这台电脑上。"
        default:
            return ""
        }
    }
}

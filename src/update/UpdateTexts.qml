// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Update

/// What the update window says in each of its states.
QtObject {
    id: texts

    required property UpdateReport report
    required property bool english

    readonly property string heading: {
        switch (texts.report.state) {
        case UpdateReport.Checking:
            return texts.english ? "Checking for updates…" : "正在检查更新…"
        case UpdateReport.NothingNew:
            return texts.english ? "vellumo is up to date" : "vellumo 已是最新版本"
        case UpdateReport.SomethingNew:
            return texts.english ? "vellumo %1 is available".arg(texts.report.version)
                                 : "vellumo %1 已发布".arg(texts.report.version)
        default:
            return texts.english ? "The check did not succeed" : "检查更新没有成功"
        }
    }

    readonly property string detail: {
        switch (texts.report.state) {
        case UpdateReport.Checking:
            return ""
        case UpdateReport.NothingNew:
            return (texts.english ? "You have version %1; there is nothing newer."
                                  : "你使用的是 %1 版,目前没有更新的版本。")
                .arg(texts.report.runningVersion)
        case UpdateReport.SomethingNew:
            return (texts.english ? "Released on %1. You have version %2."
                                  : "发布于 %1。你使用的是 %2 版。")
                .arg(texts.report.released).arg(texts.report.runningVersion)
        default:
            return texts.failure
        }
    }

    readonly property string failure: {
        switch (texts.report.failure) {
        case UpdateReport.Insecure:
            return texts.english
                ? "No secure connection to the update service could be made. Nothing was read from it."
                : "无法与更新服务建立安全连接,没有读取任何内容。"
        case UpdateReport.TimedOut:
            return texts.english ? "The update service did not answer in time."
                                 : "更新服务没有及时回应。"
        case UpdateReport.Refused:
            return texts.english ? "The update service has a problem at the moment."
                                 : "更新服务暂时有问题。"
        case UpdateReport.Untrusted:
            return texts.english
                ? "The answer does not carry vellumo's signature, so it was ignored."
                : "收到的回应没有 vellumo 的签名,已被忽略。"
        case UpdateReport.Unreadable:
            return texts.english ? "The answer cannot be read by this version of vellumo."
                                 : "这个版本的 vellumo 无法读懂收到的回应。"
        case UpdateReport.Expired:
            return texts.english
                ? "The answer is too old to be believed. If the date of this computer is right, try again another day."
                : "收到的回应已过期,不能采信。如果本机日期正确,请改天再试。"
        case UpdateReport.Incomplete:
            return texts.english
                ? "A part of vellumo that checks signatures is missing, so the answer was ignored. Install vellumo again."
                : "vellumo 缺少检查签名的部分,收到的回应已被忽略。请重新安装 vellumo。"
        default:
            return texts.english
                ? "The update service could not be reached. Is this computer connected to the internet?"
                : "无法连接到更新服务。这台电脑连上网络了吗?"
        }
    }

    readonly property string hint: texts.report.unopenedPage.length > 0
        ? (texts.english ? "No browser could be opened. The address is %1"
                         : "无法打开浏览器。网址是 %1").arg(texts.report.unopenedPage)
        : (texts.english ? "The download page on %1 opens in your browser. vellumo installs nothing by itself."
                         : "将在浏览器中打开 %1 上的下载页面。vellumo 不会自行安装任何东西。")
            .arg(texts.report.site)
}

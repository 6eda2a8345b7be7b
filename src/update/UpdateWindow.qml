// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui
import Vellumo.Update

/// How a check for updates goes. As high as what it says.
FittingDialog {
    id: dialog

    required property BilingualText texts
    required property UpdateReport report

    readonly property bool english: dialog.texts.english
    readonly property bool isChecking: dialog.report.state === UpdateReport.Checking
    readonly property bool isOffer: dialog.report.state === UpdateReport.SomethingNew
    readonly property bool hasFailed: dialog.report.state === UpdateReport.Failed

    fittingHeight: Math.ceil(content.height) + 2 * Units.space32 - Units.space8

    onClosing: dialog.report.userClosed()

    function headingText(): string {
        switch (dialog.report.state) {
        case UpdateReport.Checking:
            return dialog.english ? "Checking for updates…" : "正在检查更新…"
        case UpdateReport.NothingNew:
            return dialog.english ? "vellumo is up to date" : "vellumo 已是最新版本"
        case UpdateReport.SomethingNew:
            return dialog.english ? "vellumo %1 is available".arg(dialog.report.version)
                                  : "vellumo %1 已发布".arg(dialog.report.version)
        default:
            return dialog.english ? "The check did not succeed" : "检查更新没有成功"
        }
    }

    function detailText(): string {
        switch (dialog.report.state) {
        case UpdateReport.Checking:
            return ""
        case UpdateReport.NothingNew:
            return (dialog.english ? "You have version %1; there is nothing newer."
                                   : "你使用的是 %1 版,目前没有更新的版本。")
                .arg(dialog.report.runningVersion)
        case UpdateReport.SomethingNew:
            return (dialog.english ? "Released on %1. You have version %2."
                                   : "发布于 %1。你使用的是 %2 版。")
                .arg(dialog.report.released).arg(dialog.report.runningVersion)
        default:
            return dialog.failureText()
        }
    }

    function failureText(): string {
        switch (dialog.report.failure) {
        case UpdateReport.Insecure:
            return dialog.english
                ? "No secure connection to the update service could be made. Nothing was read from it."
                : "无法与更新服务建立安全连接,没有读取任何内容。"
        case UpdateReport.TimedOut:
            return dialog.english ? "The update service did not answer in time."
                                  : "更新服务没有及时回应。"
        case UpdateReport.Refused:
            return dialog.english ? "The update service has a problem at the moment."
                                  : "更新服务暂时有问题。"
        case UpdateReport.Untrusted:
            return dialog.english
                ? "The answer does not carry vellumo's signature, so it was ignored."
                : "收到的回应没有 vellumo 的签名,已被忽略。"
        case UpdateReport.Unreadable:
            return dialog.english ? "The answer cannot be read by this version of vellumo."
                                  : "这个版本的 vellumo 无法读懂收到的回应。"
        case UpdateReport.Expired:
            return dialog.english
                ? "The answer is too old to be believed. If the date of this computer is right, try again another day."
                : "收到的回应已过期,不能采信。如果本机日期正确,请改天再试。"
        case UpdateReport.Incomplete:
            return dialog.english
                ? "A part of vellumo that checks signatures is missing, so the answer was ignored. Install vellumo again."
                : "vellumo 缺少检查签名的部分,收到的回应已被忽略。请重新安装 vellumo。"
        default:
            return dialog.english
                ? "The update service could not be reached. Is this computer connected to the internet?"
                : "无法连接到更新服务。这台电脑连上网络了吗?"
        }
    }

    Item {
        id: content

        x: Units.space32
        y: Units.space32 - Units.space4
        width: dialog.width - 2 * Units.space32
        height: buttons.y + buttons.height
        focus: true

        Accessible.role: Accessible.Dialog
        Accessible.name: heading.text
        Accessible.description: detail.text

        Keys.onEscapePressed: dialog.report.userClosed()
        Keys.onReturnPressed: event => buttons.actOnce(event)
        Keys.onEnterPressed: event => buttons.actOnce(event)

        Announcer {
            id: announcer
        }
        Connections {
            target: dialog.report

            function onStateShown(): void {
                content.forceActiveFocus() // the button that had it may be gone
                announcer.announce(heading.text + " " + detail.text)
            }
        }

        Text {
            id: heading

            objectName: "heading"
            width: parent.width
            text: dialog.headingText()
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.ink
            font.pixelSize: Units.type20
            font.weight: Font.DemiBold
            lineHeightMode: Text.FixedHeight
            lineHeight: Math.round(Units.type20 * Units.titleLine)

            Accessible.role: Accessible.Heading
            Accessible.name: heading.text
        }

        Text {
            id: detail

            objectName: "detail"
            anchors.top: heading.bottom
            anchors.topMargin: Units.space8
            width: parent.width
            visible: detail.text.length > 0
            text: dialog.detailText()
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type13
            lineHeightMode: Text.FixedHeight
            lineHeight: Math.round(Units.type13 * Units.readingLine)

            Accessible.role: Accessible.StaticText
            Accessible.name: detail.text
        }

        ProgressLine {
            id: progress

            anchors.top: heading.bottom
            anchors.topMargin: Units.space16
            width: parent.width
            visible: dialog.isChecking
        }

        ReleaseNotes {
            id: notes

            objectName: "notes"
            anchors.top: detail.bottom
            anchors.topMargin: Units.space16
            width: parent.width
            visible: dialog.isOffer && dialog.report.notes.length > 0
            text: dialog.report.notes
            label: dialog.english ? "What is new" : "更新内容"
        }

        ReadingText {
            id: hint

            objectName: "hint"
            anchors.top: notes.visible ? notes.bottom : detail.bottom
            anchors.topMargin: Units.space12
            width: parent.width
            visible: dialog.isOffer
            wrapMode: TextEdit.Wrap
            text: {
                if (dialog.report.unopenedPage.length > 0)
                    return (dialog.english ? "No browser could be opened. The address is %1"
                                           : "无法打开浏览器。网址是 %1")
                        .arg(dialog.report.unopenedPage)
                return (dialog.english ? "The download page on %1 opens in your browser. vellumo installs nothing by itself."
                                       : "将在浏览器中打开 %1 上的下载页面。vellumo 不会自行安装任何东西。")
                    .arg(dialog.report.site)
            }
            color: Theme.secondInk
            selectedTextColor: Theme.ink
            font.pixelSize: Units.type12
        }

        Row {
            id: buttons

            anchors.top: hint.visible ? hint.bottom
                                      : dialog.isChecking ? progress.bottom : detail.bottom
            anchors.topMargin: Units.space24
            anchors.right: parent.right
            spacing: Units.space12

            function actOnce(event: KeyEvent): void {
                if (!event.isAutoRepeat)
                    buttons.act()
            }
            function act(): void {
                if (dialog.isOffer)
                    dialog.report.download()
                else if (dialog.hasFailed)
                    dialog.report.tryAgain()
                else if (!dialog.isChecking)
                    dialog.report.userClosed()
            }

            TextButton {
                objectName: "close"
                minimumWidth: 96
                primary: dialog.report.state === UpdateReport.NothingNew
                text: {
                    if (dialog.isOffer)
                        return dialog.english ? "Not now" : "暂不"
                    if (dialog.isChecking)
                        return dialog.english ? "Cancel" : "取消"
                    return dialog.english ? "Close" : "关闭"
                }
                onClicked: dialog.report.userClosed()
            }
            TextButton {
                objectName: "act"
                minimumWidth: 96
                primary: true
                visible: dialog.isOffer || dialog.hasFailed
                text: dialog.isOffer ? (dialog.english ? "Download" : "下载")
                                     : (dialog.english ? "Try again" : "重试")
                onClicked: buttons.act()
            }
        }
    }
}

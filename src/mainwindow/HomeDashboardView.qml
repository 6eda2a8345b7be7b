// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Library
import Vellumo.MainWindow
import Vellumo.Ui

/// The dashboard: the side bar, notices, and the current page or open note.
FocusScope {
    id: dashboard

    required property MainWindowModel main
    required property BilingualText texts

    readonly property bool showsSheet: dashboard.main.showsSettings || dashboard.main.exporter.isOpen

    Shortcut {
        sequence: "Ctrl+F"
        enabled: !dashboard.showsSheet
        onActivated: dashboard.main.goToSearch()
    }
    Shortcut {
        sequence: "Ctrl+Z"
        enabled: !dashboard.showsSheet && dashboard.main.deletion.canUndo
        onActivated: dashboard.main.deletion.undo()
    }
    Shortcut {
        sequence: "Ctrl+,"
        enabled: !dashboard.showsSheet
        onActivated: dashboard.main.showsSettings = true
    }

    SideBar {
        id: sideBar

        anchors.left: parent.left
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        width: Math.min(Units.sideBar, Math.round(dashboard.width * 0.3))
        main: dashboard.main
        texts: dashboard.texts
    }
    Column {
        id: notices

        z: 1
        anchors.left: sideBar.right
        anchors.leftMargin: Units.space24
        anchors.right: parent.right
        anchors.rightMargin: Units.space24

        DashboardNotice {
            readonly property NotesFileState file: dashboard.main.notesFile

            objectName: "notesFile"
            width: parent.width
            height: implicitHeight
            wanted: words.length > 0
            status: file.isUnsaved ? StatusLine.Bad : StatusLine.Limited
            words: file.notice
            acceptText: file.isUnsaved ? "" : dashboard.texts.english ? "Got it" : "知道了"
            onAccepted: file.acknowledge()
            onKeyboardLeft: pages.forceActiveFocus(Qt.OtherFocusReason)
        }
        DashboardNotice {
            readonly property NoteDeletion deletion: dashboard.main.deletion

            objectName: "deletion"
            width: parent.width
            height: implicitHeight
            wanted: deletion.canUndo
            status: StatusLine.Neutral
            words: deletion.outcome
            acceptText: dashboard.texts.english ? "Undo" : "撤销"
            declineText: dashboard.texts.english ? "Dismiss" : "关闭"
            onAccepted: deletion.undo()
            onDeclined: deletion.dismiss()
            onKeyboardLeft: pages.forceActiveFocus(Qt.OtherFocusReason)
        }
        DashboardNotice {
            objectName: "unsavedSettings"
            width: parent.width
            height: implicitHeight
            wanted: dashboard.main.hasUnsavedSettings
            status: StatusLine.Bad
            words: dashboard.texts.english
                ? "Your settings cannot be saved. Your changes are lost when vellumo quits."
                : "设置无法保存，退出 vellumo 后所做的更改会丢失。"
            acceptText: dashboard.texts.english ? "Got it" : "知道了"
            onAccepted: dashboard.main.acknowledgeUnsavedSettings()
            onKeyboardLeft: pages.forceActiveFocus(Qt.OtherFocusReason)
        }
        DashboardNotice {
            id: reach

            readonly property TapReach taps: dashboard.main.taps

            objectName: "reach"
            width: parent.width
            height: implicitHeight
            wanted: words.length > 0
            status: StatusLine.Neutral
            words: taps ? taps.question : ""
            acceptText: !taps ? "" : taps.hasFailed ? (dashboard.texts.english ? "Got it" : "知道了")
                                                    : (dashboard.texts.english ? "Allow" : "允许")
            declineText: !taps || taps.hasFailed ? "" : dashboard.texts.english ? "Not now" : "暂不"
            onAccepted: taps.answer(!taps.hasFailed)
            onDeclined: taps.answer(false)
            onKeyboardLeft: pages.forceActiveFocus(Qt.OtherFocusReason)
        }
        DashboardNotice {
            objectName: "loginStart"
            width: parent.width
            height: implicitHeight
            wanted: dashboard.main.asksForLoginStart && !reach.wanted && !updates.wanted
            status: StatusLine.Neutral
            words: dashboard.texts.english
                ? "May vellumo start when you log in? It waits in the background, without a window."
                : "允许 vellumo 在登录系统时启动吗？它在后台运行，不打开窗口。"
            acceptText: dashboard.texts.english ? "Allow" : "允许"
            declineText: dashboard.texts.english ? "Not now" : "暂不"
            onAccepted: dashboard.main.answerLoginStart(true)
            onDeclined: dashboard.main.answerLoginStart(false)
            onKeyboardLeft: pages.forceActiveFocus(Qt.OtherFocusReason)
        }
        DashboardNotice {
            id: updates

            objectName: "dailyUpdates"
            width: parent.width
            height: implicitHeight
            wanted: dashboard.main.asksForUpdates && !reach.wanted
            status: StatusLine.Neutral
            words: dashboard.texts.english
                ? "May vellumo look for new versions once a day? It only asks whether there is one."
                : "允许 vellumo 每天检查一次新版本吗？只会查询是否有新版本。"
            acceptText: dashboard.texts.english ? "Allow" : "允许"
            declineText: dashboard.texts.english ? "Not now" : "暂不"
            onAccepted: dashboard.main.looksForUpdates = true
            onDeclined: dashboard.main.looksForUpdates = false
            onKeyboardLeft: pages.forceActiveFocus(Qt.OtherFocusReason)
        }
    }
    DashboardPages {
        id: pages

        anchors.left: sideBar.right
        anchors.right: parent.right
        anchors.top: notices.bottom
        anchors.bottom: parent.bottom
        focus: !dashboard.showsSheet
        main: dashboard.main
        texts: dashboard.texts
    }

    LoadedView {
        anchors.fill: parent
        focus: wanted
        file: Qt.resolvedUrl("ExportView.qml")
        wanted: dashboard.main.exporter.isOpen
        main: dashboard.main
        texts: dashboard.texts
    }
    LoadedView {
        anchors.fill: parent
        focus: wanted
        file: Qt.resolvedUrl("SettingsView.qml")
        wanted: dashboard.main.showsSettings
        main: dashboard.main
        texts: dashboard.texts
    }
}

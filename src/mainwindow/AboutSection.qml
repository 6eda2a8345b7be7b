// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.MainWindow
import Vellumo.Ui

/// The version, checks for a newer one, and the way to quit, which desktops without a tray do not
/// offer elsewhere.
SectionCard {
    id: section

    required property MainWindowModel main
    required property bool english

    title: section.english ? "About" : "关于"

    Label {
        objectName: "version"
        width: parent.width
        text: "vellumo " + Qt.application.version
        wrapMode: Text.Wrap
        font.weight: Font.Medium
    }
    SwitchRow {
        width: parent.width
        visible: section.main.canLookForUpdates
        setting: "looksForUpdates"
        name: section.english ? "Look for new versions once a day" : "每天检查一次新版本"
        explanation: section.english ? "Only asks whether there is one." : "只查询是否有新版本。"
        checked: section.main.looksForUpdates
        onToggled: section.main.looksForUpdates = !section.main.looksForUpdates
    }
    Flow {
        width: parent.width
        visible: section.main.hasProgramMenu
        spacing: Units.space8

        TextButton {
            objectName: "checkForUpdates"
            width: Math.min(implicitWidth, parent.width)
            text: section.english ? "Check for Updates…" : "检查更新…"
            onClicked: section.main.checkForUpdates()
        }
        TextButton {
            objectName: "quit"
            width: Math.min(implicitWidth, parent.width)
            text: section.english ? "Quit vellumo" : "退出 vellumo"
            onClicked: section.main.quit()
        }
    }
}

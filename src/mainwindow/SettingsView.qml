// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// The settings sheet. Changes take effect immediately.
Sheet {
    id: settings

    required property MainWindowModel main
    required property BilingualText texts

    readonly property bool english: settings.texts.english

    accessibleName: title.text
    onDismissed: settings.main.showsSettings = false

    Column {
        width: parent.width

        Label {
            id: title

            objectName: "settingsTitle"
            width: parent.width
            text: settings.english ? "Settings" : "设置"
            wrapMode: Text.Wrap
            font.pixelSize: Units.type20
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        Item {
            width: 1
            height: Units.space20
        }
        Label {
            width: parent.width
            text: settings.english ? "Language" : "语言"
            font.pixelSize: Units.type14
            font.weight: Font.Medium
        }
        Item {
            width: 1
            height: Units.space8
        }
        SegmentedPicker {
            objectName: "language"
            width: parent.width
            focus: true
            labels: ["中文", "English"]
            values: [MainWindowModel.Chinese, MainWindowModel.English]
            value: settings.main.language
            accessibleName: settings.english ? "Language" : "语言"
            onChosen: value => { settings.main.language = value }
        }
        Item {
            width: 1
            height: Units.space8
        }
        Label {
            width: parent.width
            text: settings.english ? "Used for explanations and for vellumo itself."
                                   : "解释和界面都使用这种语言。"
            wrapMode: Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
            lineFactor: Units.readingLine
        }
        Item {
            width: 1
            height: Units.space24
        }
        Item {
            width: parent.width
            height: daily.height + Units.space16
            visible: settings.main.canLookForUpdates

            Label {
                id: daily

                width: parent.width - looks.width - Units.space12
                text: settings.english ? "Look for new versions once a day" : "每天检查一次新版本"
                wrapMode: Text.Wrap
                font.pixelSize: Units.type14
            }
            Switch {
                id: looks

                objectName: "looksForUpdates"
                anchors.right: parent.right
                accessibleName: daily.text
                checked: settings.main.looksForUpdates
                onClicked: settings.main.looksForUpdates = !settings.main.looksForUpdates
            }
        }
        Flow {
            width: parent.width
            visible: settings.main.hasProgramMenu
            bottomPadding: Units.space16

            TextButton {
                objectName: "checkForUpdates"
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: settings.english ? "Check for Updates…" : "检查更新…"
                onClicked: settings.main.checkForUpdates()
            }
            TextButton {
                objectName: "quit"
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: settings.english ? "Quit vellumo" : "退出 vellumo"
                onClicked: settings.main.quit()
            }
        }
        TextButton {
            objectName: "done"
            anchors.right: parent.right
            minimumWidth: Units.dialogButton
            primary: true
            text: settings.english ? "Done" : "完成"
            onClicked: settings.dismissed()
        }
    }
}

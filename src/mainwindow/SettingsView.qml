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
        TextButton {
            objectName: "toComputer"
            visible: settings.main.hasComputer
            width: Math.min(implicitWidth, parent.width)
            quiet: true
            icon: "computer"
            text: settings.english ? "More under “This computer”"
                                   : "更多设置在“这台电脑”页"
            onClicked: {
                settings.main.page = MainWindowModel.Computer
                settings.dismissed()
            }
        }
        Item {
            width: 1
            height: Units.space24
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

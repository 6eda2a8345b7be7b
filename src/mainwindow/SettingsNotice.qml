// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// Says once that the settings cannot be written. Takes no room otherwise.
FocusScope {
    id: notice

    required property MainWindowModel main
    required property bool english

    /// It goes, and had the keyboard.
    signal keyboardLeft

    visible: notice.main.hasUnsavedSettings
    implicitHeight: notice.visible ? card.height + Units.space16 : 0

    onVisibleChanged: {
        if (visible)
            announcer.announce(words.text)
        else if (activeFocus)
            notice.keyboardLeft()
    }

    Announcer {
        id: announcer
    }
    Card {
        id: card

        y: Units.space16
        width: notice.width
        height: Math.max(words.height, known.height) + 2 * Units.space12

        Rectangle {
            x: Units.space16
            y: words.y + (words.lineHeight - height) / 2
            width: Units.statusDot
            height: width
            radius: width / 2
            color: Theme.bad
        }
        Label {
            id: words

            objectName: "settingsNotice"
            x: Units.space16 + Units.statusDot + Units.space12
            anchors.verticalCenter: card.verticalCenter
            width: known.x - Units.space12 - x
            text: notice.english
                ? "Your settings cannot be saved. What you change is lost when vellumo ends."
                : "设置无法保存,退出 vellumo 后所做的更改会丢失。"
            wrapMode: Text.Wrap
            font.pixelSize: Units.type13
            lineFactor: Units.readingLine
            Accessible.role: Accessible.AlertMessage
        }
        TextButton {
            id: known

            objectName: "knowSettings"
            x: card.width - width - Units.space8
            anchors.verticalCenter: card.verticalCenter
            focus: true
            quiet: true
            text: notice.english ? "Got it" : "知道了"
            onClicked: notice.main.acknowledgeUnsavedSettings()
        }
    }
}

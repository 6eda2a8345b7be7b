// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// Explains what would be read and asks for consent. Closing the window is a no.
FittingDialog {
    id: dialog

    required property BilingualText texts

    signal answered(bool allowed)

    readonly property var points: dialog.texts.english ? [
        "Only when you double-tap Option (the Alt key), vellumo looks at the text you have selected, the title of the window and, in a browser, the page's address.",
        "That text goes only to the service you set up for explanations. Nothing is read between double-taps, and password fields are never read.",
        "You can withdraw this at any time under “This computer”."
    ] : [
        "只有在你按两下 Option（Alt 键）时，vellumo 才会查看你选中的文字、窗口标题，以及浏览器中的网页地址。",
        "这段文字只会发送到你设置的解释服务。其余时间不读取任何内容，密码框永远不读。",
        "你可以随时在“这台电脑”页收回许可。"
    ]

    fittingHeight: Math.ceil(column.height) + 2 * Units.space32 - Units.space8

    onClosing: dialog.answered(false)

    Item {
        id: column

        anchors.top: parent.top
        anchors.topMargin: Units.space32 - Units.space4
        anchors.horizontalCenter: parent.horizontalCenter
        // Not by anchors: the window takes its height from this before it has laid out its content.
        width: dialog.width - 2 * Units.space32
        height: buttons.y + buttons.height
        focus: true

        Accessible.role: Accessible.Dialog
        Accessible.name: heading.text
        Accessible.description: dialog.points.join(" ")

        Keys.onEscapePressed: dialog.answered(false)

        Text {
            id: heading

            width: parent.width
            text: dialog.texts.english ? "Let vellumo read the text you select?"
                                       : "允许 vellumo 读取你选中的文字吗？"
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.ink
            font.pixelSize: Units.type20
            font.weight: Font.DemiBold
            lineHeightMode: Text.FixedHeight
            lineHeight: Math.round(Units.type20 * Units.titleLine)
        }

        Column {
            id: list

            anchors.top: heading.bottom
            anchors.topMargin: Units.space16
            width: parent.width
            spacing: Units.space12

            Repeater {
                model: dialog.points

                Item {
                    id: point

                    required property string modelData

                    width: list.width
                    height: label.height

                    Rectangle {
                        anchors.left: parent.left
                        y: Math.round(label.lineHeight / 2 - height / 2) + 1
                        width: Units.dot
                        height: Units.dot
                        radius: Units.dot / 2
                        color: Theme.accent
                    }
                    Label {
                        id: label

                        anchors.left: parent.left
                        anchors.leftMargin: Units.space20
                        anchors.right: parent.right
                        text: point.modelData
                        wrapMode: Text.Wrap
                        color: Theme.secondInk
                        lineFactor: Units.readingLine
                        Accessible.ignored: true // is part of the dialog's description
                    }
                }
            }
        }

        Row {
            id: buttons

            anchors.top: list.bottom
            anchors.topMargin: Units.space24
            anchors.right: parent.right
            spacing: Units.space12

            TextButton {
                objectName: "notNow"
                minimumWidth: Units.dialogButton
                text: dialog.texts.english ? "Not now" : "暂不"
                onClicked: dialog.answered(false)
            }
            TextButton {
                objectName: "allow"
                minimumWidth: Units.dialogButton
                primary: true
                text: dialog.texts.english ? "Allow" : "允许"
                onClicked: dialog.answered(true)
            }
        }
    }
}

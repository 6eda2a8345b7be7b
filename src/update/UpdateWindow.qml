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

    Item {
        id: content

        anchors.top: parent.top
        anchors.topMargin: Units.space32 - Units.space4
        anchors.horizontalCenter: parent.horizontalCenter
        // Not by anchors: the window takes its height from this before it has laid out its content.
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
            text: dialog.report.heading
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
            text: dialog.report.detail
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

            island: false
            objectName: "hint"
            anchors.top: notes.visible ? notes.bottom : detail.bottom
            anchors.topMargin: Units.space12
            width: parent.width
            visible: dialog.isOffer
            wrapMode: TextEdit.Wrap
            text: dialog.report.hint
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
                minimumWidth: Units.dialogButton
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
                minimumWidth: Units.dialogButton
                primary: true
                visible: dialog.isOffer || dialog.hasFailed
                text: dialog.isOffer ? (dialog.english ? "Download" : "下载")
                                     : (dialog.english ? "Try again" : "重试")
                onClicked: buttons.act()
            }
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// What can be done with an answer, or without one: a quiet row below it, under the reason of a
/// failure.
Item {
    id: actions

    required property ResultPanelModel view
    required property BilingualText texts
    property bool hasService: false ///< whether it offers the service's settings

    readonly property bool hasReason: actions.view.reason.length > 0
    readonly property bool isSolid: actions.hasService || actions.view.offersRetry
    readonly property bool hasButtons: actions.isSolid || actions.view.offersCopy
                                       || actions.view.offersNote

    height: actions.hasButtons ? row.y + row.height : reason.height
    visible: actions.hasReason || actions.hasButtons

    function settle(): void {
        row.forceLayout()
    }

    Text {
        id: reason

        objectName: "reason"
        width: parent.width
        visible: actions.hasReason
        text: actions.view.reason
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.islandSecondText
        font.pixelSize: Units.type13
        lineHeightMode: Text.FixedHeight
        lineHeight: Math.round(Units.type13 * Units.readingLine)

        Accessible.role: Accessible.StaticText
        Accessible.name: reason.text
    }
    Flow {
        id: row

        anchors.top: actions.hasReason ? reason.bottom : parent.top
        anchors.topMargin: actions.hasReason ? Units.space8 : 0
        anchors.left: parent.left
        anchors.leftMargin: actions.isSolid ? 0 : -Units.space12 // to align with the text
        anchors.right: parent.right
        spacing: actions.isSolid ? Units.space8 : Units.space4

        TextButton {
            objectName: "checkService"
            visible: actions.hasService
            island: true
            primary: true
            text: actions.texts.english ? "Check the service" : "检查服务"
            onClicked: actions.view.openServiceSettings()
        }
        TextButton {
            id: retry

            objectName: "retry"
            visible: actions.view.offersRetry
            island: true
            text: actions.texts.english ? "Try again" : "重试"
            onClicked: actions.view.retry()
        }
        TextButton {
            id: copy

            objectName: "copy"
            visible: actions.view.offersCopy
            island: true
            quiet: true
            icon: copied.running ? "check" : "copy"
            text: copied.running ? (actions.texts.english ? "Copied" : "已复制")
                                 : (actions.texts.english ? "Copy" : "复制")
            onClicked: {
                actions.view.copy()
                copied.restart()
                announcer.announce(actions.texts.english ? "Copied" : "已复制")
            }

            Timer {
                id: copied

                interval: Units.feedback
            }
        }
        TextButton {
            id: open

            objectName: "openNote"
            visible: actions.view.offersNote
            island: true
            quiet: true
            icon: "open"
            text: actions.texts.english ? "Open in vellumo" : "在 vellumo 中打开"
            onClicked: actions.view.openNote()
        }
    }
    Announcer {
        id: announcer
    }
}

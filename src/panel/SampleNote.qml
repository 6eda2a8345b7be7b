// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// Says that an answer is a sample, and where a service is entered.
Item {
    id: note

    required property ResultPanelModel view
    required property BilingualText texts

    height: open.visible ? Math.max(label.height, open.height) : label.height

    Text {
        id: label

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - (open.visible ? open.width + Units.space12 : 0)
        text: note.view.isForAFault
            ? (note.texts.english ? "A sample answer — there is a mistake in the configuration."
                                  : "这是示例回答 —— 配置里有错误。")
            : (note.texts.english ? "A sample answer — no service is set up yet."
                                  : "这是示例回答 —— 还没有设置解释服务。")
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.islandSecondText
        font.pixelSize: Units.type12

        Accessible.role: Accessible.StaticText
        Accessible.name: label.text
    }
    TextButton {
        id: open

        objectName: "openServiceSettings"
        anchors.right: parent.right
        visible: note.view.leadsToService
        island: true
        text: note.view.isForAFault ? (note.texts.english ? "Check the service" : "检查服务")
                                    : (note.texts.english ? "Set up a service" : "设置服务")
        onClicked: note.view.openServiceSettings()
    }
}

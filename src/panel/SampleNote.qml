// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// Says that the answer below is a sample, and where a service is entered.
Item {
    id: note

    required property ResultPanelModel view
    required property BilingualText texts

    height: open.visible ? Math.max(label.height, open.height) : label.height

    Rectangle {
        id: dot

        anchors.left: parent.left
        y: label.y + Math.round((Units.type12 * Units.cardLine - height) / 2)
        width: Units.dot
        height: width
        radius: width / 2
        color: Theme.amber
    }
    Text {
        id: label

        anchors.left: dot.right
        anchors.leftMargin: Units.space8
        anchors.right: open.visible ? open.left : parent.right
        anchors.rightMargin: open.visible ? Units.space12 : 0
        anchors.verticalCenter: parent.verticalCenter
        text: (note.texts.english ? "Sample answer, unrelated to your text. "
                                  : "示例回答，与所选文字无关。")
            + (note.view.isForAFault ? (note.texts.english ? "The configuration has a mistake."
                                                           : "配置有误。")
                                     : (note.texts.english ? "No service is set up yet."
                                                           : "尚未设置解释服务。"))
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.islandSecondText
        font.pixelSize: Units.type12
        lineHeightMode: Text.FixedHeight
        lineHeight: Math.round(Units.type12 * Units.cardLine)

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

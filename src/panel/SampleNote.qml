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

    readonly property bool hasButton: note.view.leadsToService
    /// Whether the button is beside the text; otherwise below it.
    readonly property bool fits: note.width - open.width - Units.space12 >= Units.scaled(200)

    height: !note.hasButton ? label.height
          : note.fits ? Math.max(label.height, open.height)
                      : label.height + Units.space8 + open.height

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
        anchors.right: note.hasButton && note.fits ? open.left : parent.right
        anchors.rightMargin: note.hasButton && note.fits ? Units.space12 : 0
        y: note.hasButton && note.fits ? Math.round((note.height - height) / 2) : 0
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
        anchors.left: parent.left
        anchors.leftMargin: note.fits ? note.width - width : dot.width + Units.space8
        anchors.bottom: parent.bottom
        visible: note.hasButton
        island: true
        primary: true
        text: note.view.isForAFault ? (note.texts.english ? "Check the service" : "检查服务")
                                    : (note.texts.english ? "Set up a service" : "设置服务")
        onClicked: note.view.openServiceSettings()
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// Where the reading happens, and the close control.
Item {
    id: header

    required property ResultPanelModel view
    required property BilingualText texts

    height: Units.closeButton

    Rectangle {
        id: dot

        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        width: Units.dot
        height: Units.dot
        radius: Units.dot / 2
        color: header.view.state === ResultPanelModel.Error ? Theme.amber : Theme.islandAccent
    }
    Text {
        objectName: "title"
        anchors.left: dot.right
        anchors.leftMargin: Units.space8
        anchors.right: close.left
        anchors.rightMargin: Units.space12
        anchors.verticalCenter: parent.verticalCenter
        text: header.view.state === ResultPanelModel.Loading
              ? (header.texts.english ? "Reading…" : "正在阅读…")
              : header.view.contextName || "vellumo"
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.islandSecondText
        font.pixelSize: Units.type12
    }
    IconButton {
        id: close

        objectName: "close"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        accessibleName: header.texts.english ? "Close" : "关闭"
        icon: "close"
        reach: Units.space8
        onClicked: header.view.close()
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// One state with a button that changes it: beside the text, or below where there is little room.
Item {
    id: line

    required property string title
    property string text: ""
    property int status: StatusLine.Neutral
    property string stateName: ""
    property string lineName: "" ///< of the status, as an object
    property string buttonName: ""
    property string buttonText: "" ///< without one there is no button
    property bool primary: false
    property bool canAct: true

    readonly property bool hasButton: line.buttonText.length > 0
    readonly property bool fits: line.width - button.width - Units.space24 >= Units.scaled(280)

    signal acted()

    height: !line.hasButton ? status.height
          : line.fits ? Math.max(status.height, button.height)
                      : status.height + Units.space12 + button.height

    StatusLine {
        id: status

        objectName: line.lineName
        anchors.left: parent.left
        y: line.hasButton && line.fits ? Math.round((line.height - height) / 2) : 0
        width: line.hasButton && line.fits ? line.width - button.width - Units.space24 : line.width
        status: line.status
        stateName: line.stateName
        title: line.title
        text: line.text
    }
    TextButton {
        id: button

        objectName: line.buttonName
        visible: line.hasButton
        enabled: line.canAct
        anchors.left: parent.left
        anchors.leftMargin: line.fits ? line.width - width : Units.statusMark + Units.space12
        y: line.fits ? Math.round((line.height - height) / 2) : line.height - height
        primary: line.primary
        text: line.buttonText
        onClicked: line.acted()
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// A state as a picture in a tinted disc, which also differ without their colours.
Rectangle {
    id: mark

    property int status: StatusLine.Neutral

    readonly property color ink: mark.status === StatusLine.Good ? Theme.goodText
        : mark.status === StatusLine.Limited ? Theme.cautionText
        : mark.status === StatusLine.Bad ? Theme.bad : Theme.secondInk

    width: Units.statusMark
    height: width
    radius: width / 2
    color: Qt.alpha(mark.ink, 0.14)

    LineIcon {
        anchors.centerIn: parent
        width: Math.round(mark.width * 0.72)
        height: width
        name: mark.status === StatusLine.Good ? "check"
            : mark.status === StatusLine.Limited ? "attention"
            : mark.status === StatusLine.Bad ? "cross" : "information"
        color: mark.ink
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// What went wrong, in words; read out when it appears. Takes no room without a text.
Item {
    id: line

    property string text: ""
    property bool centered: false

    visible: line.text.length > 0
    implicitHeight: line.visible ? words.height : 0

    onTextChanged: announcer.announce(line.text)

    Announcer {
        id: announcer
    }
    Label {
        id: words

        objectName: "error"
        width: line.width
        text: line.text
        wrapMode: Text.Wrap
        horizontalAlignment: line.centered ? Text.AlignHCenter : Text.AlignLeft
        color: Theme.bad
        font.pixelSize: Units.type12
        lineFactor: Units.readingLine
    }
}

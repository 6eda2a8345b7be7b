// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Ui

/// Asks for confirmation before the key is removed from the keyring.
Flow {
    id: removal

    required property bool english

    signal kept
    signal removed

    spacing: Units.space8

    /// Focuses the answer that changes nothing.
    function ask(): void {
        keep.forceActiveFocus(Qt.OtherFocusReason)
        announcer.announce(question.text)
    }

    Keys.onEscapePressed: removal.kept()

    Label {
        id: question

        width: parent.width
        text: removal.english ? "Remove the key from the keyring? To use it again you will have to re-enter it."
                              : "要从密钥环里移除密钥吗？移除后需要重新填写。"
        wrapMode: Text.Wrap
        lineFactor: Units.readingLine

        Announcer {
            id: announcer
        }
    }
    TextButton {
        id: keep

        objectName: "keepKey"
        text: removal.english ? "Cancel" : "保留"
        onClicked: removal.kept()
    }
    TextButton {
        objectName: "removeKey"
        text: removal.english ? "Remove" : "移除"
        onClicked: removal.removed()
    }
}

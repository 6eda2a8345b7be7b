// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// Says a text to screen readers: an alert that appears is read out wherever the focus is.
Item {
    id: announcer

    property string spoken: ""

    width: 1
    height: 1
    visible: false

    Accessible.role: Accessible.AlertMessage
    Accessible.name: announcer.spoken

    function announce(text: string): void {
        announcer.visible = false
        announcer.spoken = text
        announcer.visible = text.length > 0
    }
}

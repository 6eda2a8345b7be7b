// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The setting for reading selections by copying.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    title: section.english ? "Copying" : "复制"

    SwitchRow {
        width: parent.width
        setting: "readsByCopying"
        name: section.english ? "Copy where nothing else answers" : "读不到时改用复制"
        explanation: section.computer.copyingText
        checked: section.computer.readsByCopying
        onToggled: section.computer.setReadsByCopying(!section.computer.readsByCopying)
    }
}

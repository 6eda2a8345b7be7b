// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// Whether applications are made to copy what is selected in them.
SectionCard {
    id: section

    required property ComputerModel computer
    required property bool english

    readonly property string exceptions: section.computer.noCopyingIn

    title: section.english ? "Copying" : "复制"

    SwitchRow {
        width: parent.width
        setting: "readsByCopying"
        name: section.english ? "Copy where nothing else answers" : "读不到时改用复制"
        explanation: (section.english
                ? "A few applications give a selection away only by copying it. vellumo then copies for you and puts the clipboard back; a clipboard history may keep what you selected."
                : "少数应用只能通过复制读到选中的文字。这时 vellumo 会代你复制,再恢复剪贴板;剪贴板历史可能会留下选中的文字。")
            + (section.exceptions.length === 0 ? ""
                : section.english ? " Never in: %1.".arg(section.exceptions)
                                  : "以下应用除外:%1。".arg(section.exceptions))
        checked: section.computer.readsByCopying
        onToggled: section.computer.setReadsByCopying(!section.computer.readsByCopying)
    }
}

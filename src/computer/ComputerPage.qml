// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Computer
import Vellumo.Ui

/// The page "This computer": service, permission, options and diagnostics, in the order in which
/// people need them.
ScrollPage {
    id: page

    required property ComputerModel computer
    required property BilingualText texts
    property bool syncsNotes: false ///< whether the user is signed in
    property string syncProblem: ""
    property date syncTime

    readonly property bool english: page.texts.english

    objectName: "computerPage"
    spacing: Units.space24

    onVisibleChanged: {
        if (page.visible)
            page.computer.refresh()
    }
    Component.onCompleted: page.computer.refresh()

    Connections {
        target: page.computer

        function onServiceRequested(): void {
            service.begin()
            page.reveal(service)
        }
    }

    Label {
        width: parent.width
        text: page.english ? "This computer" : "这台电脑"
        wrapMode: Text.Wrap
        font.pixelSize: Units.type24
        font.letterSpacing: Units.tightTracking
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
    }
    ServiceSection {
        id: service

        width: parent.width
        computer: page.computer
        english: page.english
    }
    PermissionSection {
        width: parent.width
        computer: page.computer
        english: page.english
    }
    OptionsSection {
        width: parent.width
        computer: page.computer
        english: page.english
    }
    ProblemSection {
        width: parent.width
        syncsNotes: page.syncsNotes
        syncProblem: page.syncProblem
        syncTime: page.syncTime
        computer: page.computer
        english: page.english
    }
    DetailsSection {
        width: parent.width
        computer: page.computer
        english: page.english
    }
}

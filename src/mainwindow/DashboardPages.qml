// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// The pages of the dashboard, and the open note: in the place of its page, or beside the list.
FocusScope {
    id: pages

    required property MainWindowModel main
    required property BilingualText texts

    /// A note stands beside the list of notes where there is room for both.
    readonly property bool splits: pages.width >= Units.splitWidth
        && pages.main.page === MainWindowModel.Notes && pages.main.note.isOpen

    Keys.onEscapePressed: event => {
        event.accepted = pages.splits
        pages.main.note.close()
    }

    DashboardPage {
        anchors.fill: parent
        page: MainWindowModel.Home
        file: Qt.resolvedUrl("HomeView.qml")
        main: pages.main
        texts: pages.texts
    }
    DashboardPage {
        width: pages.splits ? Units.splitList : pages.width
        height: pages.height
        staysBeside: pages.splits
        page: MainWindowModel.Notes
        file: Qt.resolvedUrl("NotesView.qml")
        main: pages.main
        texts: pages.texts
    }
    DashboardPage {
        anchors.fill: parent
        page: MainWindowModel.Insights
        file: Qt.resolvedUrl("InsightsView.qml")
        main: pages.main
        texts: pages.texts
    }
    DashboardPage {
        anchors.fill: parent
        page: MainWindowModel.Computer
        file: Qt.resolvedUrl("ComputerView.qml")
        main: pages.main
        texts: pages.texts
    }
    LoadedView {
        x: pages.splits ? Units.splitList : 0
        width: pages.width - x
        height: pages.height
        focus: wanted && !pages.splits
        file: Qt.resolvedUrl("NoteView.qml")
        wanted: pages.main.note.isOpen
        main: pages.main
        texts: pages.texts
    }
    Rectangle {
        x: Units.splitList
        width: Units.hairline
        height: pages.height
        visible: pages.splits
        color: Theme.hairline
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.MainWindow
import Vellumo.Ui

/// The navigation between pages, and the account.
Rectangle {
    id: bar

    required property MainWindowModel main
    required property BilingualText texts

    readonly property bool english: bar.texts.english

    color: Theme.sideBar

    Rectangle {
        anchors.right: parent.right
        width: Units.hairline
        height: parent.height
        color: Theme.hairline
    }

    FollowingFlickable {
        id: scroll

        anchors.fill: parent
        anchors.rightMargin: Units.hairline
        contentHeight: corner.y + corner.height + Units.space16
        interactive: contentHeight > height
        room: Units.space8

        // as the icons and the texts of the entries below
        Label {
            id: star

            anchors.top: name.top
            anchors.left: parent.left
            anchors.leftMargin: Units.space24
            width: Units.icon
            text: "✦"
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: Units.type17
            font.weight: Font.Bold
            Accessible.ignored: true
        }
        Label {
            id: name

            anchors.top: parent.top
            anchors.topMargin: Units.space24
            anchors.left: star.right
            anchors.leftMargin: Units.space12
            anchors.right: parent.right
            anchors.rightMargin: Units.space12 - Units.hairline
            text: "vellumo"
            elide: Text.ElideRight
            font.pixelSize: Units.type17
            font.weight: Font.Bold
        }
        Column {
            id: entries

            anchors.top: name.bottom
            anchors.topMargin: Units.space20
            anchors.left: parent.left
            anchors.leftMargin: Units.space12
            anchors.right: parent.right
            anchors.rightMargin: Units.space12 - Units.hairline
            spacing: Units.space2

            Accessible.role: Accessible.PageTabList
            Accessible.name: bar.english ? "Pages" : "页面"

            NavigationItem {
                objectName: "home"
                width: parent.width
                icon: "home"
                text: bar.english ? "Home" : "首页"
                chosen: bar.main.page === MainWindowModel.Home
                onClicked: bar.main.page = MainWindowModel.Home
            }
            NavigationItem {
                objectName: "notes"
                width: parent.width
                icon: "notes"
                text: bar.english ? "Notes" : "笔记"
                chosen: bar.main.page === MainWindowModel.Notes
                onClicked: bar.main.page = MainWindowModel.Notes
            }
            NavigationItem {
                objectName: "insights"
                width: parent.width
                icon: "insights"
                text: bar.english ? "Insights" : "统计"
                chosen: bar.main.page === MainWindowModel.Insights
                onClicked: bar.main.page = MainWindowModel.Insights
            }
            NavigationItem {
                objectName: "computer"
                width: parent.width
                visible: bar.main.hasComputer
                icon: "computer"
                text: bar.english ? "This computer" : "这台电脑"
                chosen: bar.main.page === MainWindowModel.Computer
                onClicked: bar.main.page = MainWindowModel.Computer
            }
            NavigationItem {
                objectName: "settings"
                width: parent.width
                icon: "settings"
                text: bar.english ? "Settings" : "设置"
                Accessible.role: Accessible.Button
                onClicked: bar.main.showsSettings = true
            }
        }

        AccountCorner {
            id: corner

            anchors.left: entries.left
            anchors.right: entries.right
            y: Math.max(entries.y + entries.height + Units.space12,
                        bar.height - height - Units.space16)
            auth: bar.main.auth
            sync: bar.main.sync
            status: bar.main.account
            english: bar.english
            onSignInAsked: bar.main.askForSignIn()
            onSignOutAsked: bar.main.askToSignOut()
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.hairline
        flickable: scroll
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

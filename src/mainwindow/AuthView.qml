// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Account
import Vellumo.Ui

/// The sign-in view, with a button to continue without an account.
FocusScope {
    id: view

    required property AuthService auth
    required property BilingualText texts

    readonly property bool english: view.texts.english
    readonly property int columnWidth: Math.min(Units.signInWidth, view.width - 2 * Units.space24)

    property string error: ""

    signal signInAsked
    signal withoutAccountAsked

    function signIn(): void {
        view.error = ""
        view.signInAsked()
    }

    Connections {
        target: view.auth

        function onSignInFailed(message: string): void {
            view.error = message
        }
    }

    Keys.onPressed: event => { event.accepted = page.scrollByKey(event.key) }

    FollowingFlickable {
        id: page

        anchors.fill: parent
        focus: true
        contentHeight: Math.max(height, column.height + 2 * Units.space24)

        Column {
            id: column

            anchors.centerIn: parent
            width: view.columnWidth

            Label {
                width: parent.width
                text: "✦"
                horizontalAlignment: Text.AlignHCenter
                bottomPadding: Units.space20
                font.pixelSize: Units.type34
                font.weight: Font.Bold
                Accessible.ignored: true
            }
            Label {
                objectName: "title"
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, view.width - 2 * Units.space24)
                text: view.english ? "Welcome to vellumo" : "欢迎使用 vellumo"
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                bottomPadding: Units.space32
                font.pixelSize: Units.type30
                font.letterSpacing: Units.tightTracking
                font.weight: Font.Bold
                Accessible.role: Accessible.Heading
            }
            TextButton {
                objectName: "signIn"
                width: parent.width
                primary: !view.auth.isWorking
                large: true
                enabled: !view.auth.isWorking
                opacity: 1 // its text stays readable while it is disabled
                icon: view.auth.isWorking ? "" : "google"
                iconHasColors: true
                text: view.auth.isWorking
                    ? (view.english ? "Opening browser…" : "正在打开浏览器登录…")
                    : (view.english ? "Continue with Google" : "使用 Google 继续")
                onClicked: view.signIn()
            }
            Label {
                objectName: "waiting"
                width: parent.width
                visible: view.auth.awaitsPage
                text: view.english ? "Waiting for the browser…" : "等待浏览器完成登录…"
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                topPadding: Units.space12
                bottomPadding: Units.space4
                color: Theme.secondInk
            }
            TextButton {
                objectName: "openPageAgain"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: view.auth.awaitsPage
                quiet: true
                text: view.english ? "Open the page again" : "重新打开网页"
                onClicked: view.auth.openSignInPageAgain()
            }
            TextButton {
                objectName: "cancelSignIn"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: view.auth.isWorking
                quiet: true
                text: view.english ? "Cancel" : "取消"
                onClicked: view.auth.cancelSignIn()
            }
            Item {
                width: 1
                height: errorLine.visible ? Units.space12 : 0
            }
            ErrorLine {
                id: errorLine

                width: parent.width
                centered: true
                text: view.error || view.auth.problem
            }
            Item {
                width: 1
                height: Units.space12
            }
            TextButton {
                objectName: "withoutAccount"
                anchors.horizontalCenter: parent.horizontalCenter
                quiet: true
                text: view.english ? "Use without an account" : "不登录,直接使用"
                onClicked: view.withoutAccountAsked()
            }
            Label {
                width: parent.width
                text: view.english ? "By continuing you agree to the Terms and Privacy Policy"
                                   : "登录即表示同意服务条款与隐私政策"
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
                topPadding: Units.space24
                color: Theme.secondInk
                font.pixelSize: Units.type12
            }
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        flickable: page
        color: Theme.thumb
        activeColor: Theme.thirdInk
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Account
import Vellumo.MainWindow
import Vellumo.Sync
import Vellumo.Ui

/// The account and the state of its sync; without an account, a button to sign in.
Item {
    id: corner

    required property AuthService auth
    required property SyncReporting sync ///< null in builds without sync
    required property AccountStatus status
    required property bool english

    signal signInAsked
    signal signOutAsked

    height: column.height

    Column {
        id: column

        width: parent.width
        spacing: Units.space4

        Rectangle {
            width: parent.width
            height: Units.hairline
            color: Theme.hairline
        }
        Item {
            width: 1
            height: Units.space4
        }
        Label {
            objectName: "account"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: Units.space12
            text: corner.status.account
            elide: corner.auth.isSignedIn ? Text.ElideMiddle : Text.ElideNone
            wrapMode: corner.auth.isSignedIn ? Text.NoWrap : Text.Wrap
            color: Theme.secondInk
            font.pixelSize: Units.type12
        }
        Item {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: Units.space12
            height: state.height
            visible: corner.status.syncs

            StatusMark {
                anchors.left: parent.left
                y: Math.round((state.lineHeight - height) / 2)
                status: corner.status.light === AccountStatus.Trouble ? StatusLine.Limited
                      : corner.status.light === AccountStatus.Good ? StatusLine.Good
                                                                   : StatusLine.Neutral
            }
            Label {
                id: state

                objectName: "syncState"
                anchors.left: parent.left
                anchors.leftMargin: Units.statusMark + Units.space8
                anchors.right: parent.right
                text: corner.status.syncText
                wrapMode: Text.Wrap
                color: Theme.secondInk
                font.pixelSize: Units.type12
            }
        }
        Flow {
            width: parent.width

            TextButton {
                objectName: "uploadNotes"
                visible: corner.status.syncs && corner.sync.isWithheld
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: corner.status.uploadText
                onClicked: corner.sync.uploadWithheld()
            }
            TextButton {
                objectName: "syncNow"
                visible: corner.status.syncs && !corner.sync.isWithheld
                enabled: corner.status.syncs && !corner.sync.isSyncing
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: corner.english ? "Sync now" : "立即同步"
                onClicked: corner.sync.syncNow()
            }
            TextButton {
                objectName: corner.auth.isSignedIn ? "signOut" : "goToSignIn"
                visible: corner.auth.isSignedIn || corner.auth.isConfigured
                width: Math.min(implicitWidth, parent.width)
                quiet: true
                text: corner.auth.isSignedIn ? (corner.english ? "Sign out" : "退出登录")
                                             : (corner.english ? "Sign in" : "登录")
                onClicked: {
                    if (corner.auth.isSignedIn)
                        corner.signOutAsked()
                    else
                        corner.signInAsked()
                }
            }
        }
    }
}

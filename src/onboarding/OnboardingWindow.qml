// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Onboarding
import Vellumo.Ui

/// The window of the first run: one card, a way back, the language, and how far it is to the end.
Window {
    id: window

    required property OnboardingWindowController flow
    required property BilingualText texts

    readonly property bool english: window.texts.english
    readonly property bool cramped: window.height < Units.onboardingRoom
    /// To be kept free above the window where the screen has it.
    readonly property int roomAbove: Units.onboardingPanelRoom

    width: Units.onboardingWidth
    height: Units.onboardingHeight
    minimumWidth: Units.minOnboardingWidth
    minimumHeight: Units.minOnboardingHeight
    color: Theme.ground
    title: "vellumo"

    onClosing: window.flow.userClosed()

    Connections {
        target: window.flow

        function onCardShown(): void {
            loader.showCard()
        }
    }

    FocusScope {
        anchors.fill: parent
        focus: true

        Accessible.role: Accessible.Dialog
        Accessible.name: loader.card ? loader.card.title : ""
        Accessible.description: progress.text

        Keys.onReturnPressed: event => loader.continueOnce(event)
        Keys.onEnterPressed: event => loader.continueOnce(event)

        Announcer {
            id: announcer
        }
        Loader {
            id: loader

            readonly property CardFrame card: loader.item as CardFrame

            function showCard(): void {
                loader.setSource(Qt.resolvedUrl(window.flow.card + ".qml"),
                                 { flow: window.flow, texts: window.texts })
                loader.forceActiveFocus() // what had it is gone
                announcer.announce(loader.card ? loader.card.title : "")
                appearing.restart()
            }
            function continueOnce(event: KeyEvent): void {
                if (!event.isAutoRepeat && loader.card)
                    loader.card.proceed()
            }

            anchors.fill: parent
            anchors.topMargin: bar.height + bar.y
            anchors.bottomMargin: window.cramped ? Units.space16
                                                 : progress.height + 2 * Units.space20
            focus: true

            Component.onCompleted: loader.showCard()

            NumberAnimation {
                id: appearing

                target: loader
                property: "opacity"
                from: Units.animated ? 0 : 1
                to: 1
                duration: Units.quick
            }
        }

        Item {
            id: bar

            anchors.top: parent.top
            anchors.topMargin: Units.space12
            anchors.left: parent.left
            anchors.right: parent.right
            height: Units.button

            TextButton {
                objectName: "back"
                anchors.left: parent.left
                anchors.leftMargin: Units.space12
                visible: window.flow.canGoBack
                quiet: true
                icon: "back"
                text: window.english ? "Back" : "返回"
                onClicked: window.flow.goBack()
            }
            TextButton {
                objectName: "language"
                anchors.right: parent.right
                anchors.rightMargin: Units.space12
                quiet: true
                text: window.english ? "中文" : "English"
                onClicked: window.flow.switchLanguage()
            }
        }
        ProgressDots {
            id: progress

            anchors.horizontalCenter: parent.horizontalCenter
            y: window.cramped ? bar.y + Math.round((bar.height - height) / 2)
                              : parent.height - height - Units.space20
            count: window.flow.count
            position: window.flow.position
            text: window.flow.progressText
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// The island: a header, what is to be read, and the follow-up field. It fills its panel, whose
/// height follows the fitting height up to a limit; beyond that the middle scrolls.
FocusScope {
    id: island

    required property ResultPanelModel view
    required property BilingualText texts

    readonly property int sidePadding: Units.space20 + Units.space2
    readonly property bool takesFollowUps: island.view.state === ResultPanelModel.Result
    readonly property real headerBottom: island.view.topInset + Units.space12 + Units.space2
                                         + Units.closeButton
    readonly property real footerHeight: !island.takesFollowUps ? Units.space24
        : Units.space12 + Units.followUpField + Units.space16 + Units.space2
          + (tooLong.visible ? tooLong.height + Units.space8 : 0)
    readonly property real fittingHeight: island.headerBottom + Units.space12
                                          + content.implicitHeight + island.footerHeight

    /// The height at the end of a growth. The content is laid out for it from the beginning, and
    /// uncovered.
    readonly property real finalHeight: Math.max(
        island.height, Math.min(island.fittingHeight, island.view.maximumHeight))
    readonly property bool grows: island.height < island.finalHeight - 0.5

    clip: true

    Accessible.role: Accessible.Pane
    Accessible.name: "vellumo"

    Connections {
        target: island.view

        function onFittingHeightRequested(): void {
            content.settle()
            island.view.setFittingHeight(Math.ceil(island.fittingHeight))
        }
        function onFreshlyPresented(): void {
            followUp.clear()
            content.deselect()
            reader.toTop()
            rest.forceActiveFocus()
        }
        function onScrollToBottomRequested(): void {
            reader.toBottom()
        }
        function onFocusRequested(): void {
            if (island.readerHasMarked())
                return // and is about to copy it, or to have it explained
            if (island.takesFollowUps)
                followUp.focusField()
            else
                rest.forceActiveFocus()
        }
        function onAnnouncementRequested(): void {
            announcer.announce(island.view.latestText)
        }
    }

    // Has the keyboard when no control has it.
    Item {
        id: rest

        focus: true
    }

    // Square at the screen's edge, round below: the upper corners lie outside.
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: -Units.radius22
        radius: Units.radius22
        color: Theme.islandGround
        border.width: Units.hairline
        border.color: Theme.islandEdge
    }

    IslandHeader {
        anchors.top: parent.top
        anchors.topMargin: island.view.topInset + Units.space12 + Units.space2
        anchors.left: parent.left
        anchors.leftMargin: island.sidePadding
        anchors.right: parent.right
        anchors.rightMargin: island.sidePadding
        view: island.view
        texts: island.texts
    }

    // Uncovers the content while the island grows; the last line fades in.
    Item {
        id: opening

        y: island.headerBottom
        width: island.width
        height: Math.max(0, island.height - y - island.footerHeight)
        clip: island.grows

        IslandReader {
            id: reader

            width: island.width
            height: Math.max(0, island.finalHeight - opening.y - island.footerHeight)
            topPadding: Units.space12
            contentItemHeight: content.implicitHeight

            IslandBody {
                id: content

                x: island.sidePadding
                y: Units.space12
                width: island.width - 2 * island.sidePadding
                view: island.view
                texts: island.texts
            }
        }
        GrowingEdge {
            anchors.bottom: parent.bottom
            x: Units.hairline // leaves the island's edge
            width: parent.width - 2 * x
            visible: island.grows
        }
    }

    FollowUpField {
        id: followUp

        anchors.bottom: parent.bottom
        anchors.bottomMargin: Units.space16 + Units.space2
        anchors.left: parent.left
        anchors.leftMargin: island.sidePadding
        anchors.right: parent.right
        anchors.rightMargin: island.sidePadding
        visible: island.takesFollowUps
        view: island.view
        texts: island.texts
    }

    Text {
        id: tooLong

        objectName: "tooLong"
        anchors.bottom: followUp.top
        anchors.bottomMargin: Units.space8
        anchors.left: followUp.left
        anchors.leftMargin: Units.space16 - Units.space2
        anchors.right: followUp.right
        anchors.rightMargin: Units.space16 - Units.space2
        visible: followUp.visible && followUp.isTooLong
        text: island.texts.english ? "That is too long — shorten the question."
                                   : "太长了 —— 请缩短问题。"
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.amber
        font.pixelSize: Units.type12
        onVisibleChanged: announcer.announce(visible ? text : "")

        Accessible.role: Accessible.StaticText
        Accessible.name: tooLong.text
    }

    CompositionRoute {
        scope: island
        field: island.takesFollowUps ? followUp.input : null
    }

    Announcer {
        id: announcer
    }

    /// Whether a text of the panel has the keyboard and a part of it is marked.
    function readerHasMarked(): bool {
        const item = island.Window.activeFocusItem
        return item instanceof TextEdit && item.selectedText.length > 0
    }

    /// Whether the key writes something and is no shortcut.
    function isTyping(event: KeyEvent): bool {
        const shortcuts = Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier
        return event.text.length > 0 && event.text >= " " && event.key !== Qt.Key_Delete
            && !(event.modifiers & shortcuts)
    }

    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_Down)
            reader.scrollBy(event.key === Qt.Key_Down ? Units.islandScrollStep : reader.height * 0.9)
        else if (event.key === Qt.Key_PageUp || event.key === Qt.Key_Up)
            reader.scrollBy(event.key === Qt.Key_Up ? -Units.islandScrollStep : -reader.height * 0.9)
        else if (island.takesFollowUps && island.isTyping(event))
            followUp.type(event.text) // the panel has the keyboard, and this is where it writes
        else
            return
        event.accepted = true
    }
}

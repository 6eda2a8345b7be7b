// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Pill
import Vellumo.Ui

/// The expanded list: a header over one card per note, or over a line that says how to make one.
Item {
    id: list

    required property NotesPillModel pill
    required property BilingualText texts
    /// Cards exist only while they can be seen.
    required property bool hasCards

    readonly property int sidePadding: Units.space12 + Units.space2

    Text {
        id: header

        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: toWindow.left
        anchors.margins: list.sidePadding
        text: list.pill.listTitle
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.islandText
        font.pixelSize: Units.type15
        font.weight: Font.DemiBold

        Accessible.role: Accessible.Heading
        Accessible.name: header.text
    }

    IconButton {
        id: toWindow

        objectName: "toWindow"
        anchors.right: parent.right
        anchors.rightMargin: Units.space12
        anchors.verticalCenter: header.verticalCenter
        diameter: Units.listButton
        iconSize: Units.iconSmall
        icon: "open"
        ground: "transparent"
        accessibleName: list.texts.english ? "Open vellumo" : "打开 vellumo"
        onClicked: list.pill.windowRequested()
    }

    Text {
        id: nothing

        objectName: "nothing"
        anchors.top: cards.top
        anchors.topMargin: Units.space2
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Units.space12
        anchors.left: header.left
        anchors.right: header.right
        visible: list.pill.noteCount === 0
        text: list.texts.english ? "No notes yet — select text and double-tap Option."
                                 : "还没有笔记 —— 选中文字,按两下 Option。"
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        color: Theme.islandSecondText
        // the list has one width, so larger text grows as far as it stays whole
        fontSizeMode: Text.Fit
        minimumPixelSize: Units.minType
        font.pixelSize: Units.type12

        Accessible.role: Accessible.StaticText
        Accessible.name: nothing.text
    }

    ListView {
        id: cards

        objectName: "cards"
        anchors.top: header.bottom
        anchors.topMargin: Units.space12
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Units.space12 // Qt 6.8 does not keep a delegate's x
        anchors.rightMargin: Units.space12
        visible: list.pill.noteCount > 0
        model: list.hasCards ? list.pill.rows : null
        spacing: Units.space8
        bottomMargin: Units.space12
        boundsBehavior: Flickable.StopAtBounds
        pixelAligned: true
        clip: true
        cacheBuffer: 120
        reuseItems: true

        Accessible.role: Accessible.List
        Accessible.name: header.text

        delegate: NoteStickerRow {
            required property int index

            width: cards.width
            onAction: list.pill.select(index)
        }
    }

    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        y: cards.y
        height: cards.height - Units.radius22
        flickable: cards
    }

    // more below
    Rectangle {
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Units.cornerInset
        anchors.left: parent.left
        anchors.right: parent.right
        height: Units.space24
        visible: cards.visible && !cards.atYEnd
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.islandGroundClear
            }
            GradientStop {
                position: 1
                color: Theme.islandGround
            }
        }
    }
}

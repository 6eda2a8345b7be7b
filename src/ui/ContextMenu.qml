// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick
import Vellumo.Ui

/// An open menu, drawn in its window. A choice, a click elsewhere and Escape close it for good, and
/// the keyboard returns to where it was. MenuOpener makes it.
FocusScope {
    id: menu

    /// Each entry has `name` (for tests), `text`, `run()`, and `enabled` unless it always is. In a
    /// menu of alternatives each has `checked`.
    required property var entries
    required property point at ///< of the window
    property bool island: false ///< in the island's colours, and in one row, since it is low

    property Item origin: null
    property int current: -1
    readonly property bool isChoice: menu.entries[0].checked !== undefined
    readonly property int textX: menu.isChoice ? Units.space8 + Units.iconSmall + Units.space8
                                               : Units.space12
    property real widest: 0

    anchors.fill: parent
    z: 1000

    Accessible.role: Accessible.PopupMenu
    Accessible.name: InterfaceLanguage.english ? "Menu" : "菜单"

    function isEnabled(index: int): bool {
        return menu.entries[index].enabled !== false
    }
    function move(by: int): void {
        const count = menu.entries.length
        let next = menu.current < 0 && by < 0 ? 0 : menu.current
        for (let tries = 0; tries < count; ++tries) {
            next = (next + by + count) % count
            if (menu.isEnabled(next)) {
                menu.current = next
                return
            }
        }
    }
    function close(): void {
        if (menu.origin !== null)
            menu.origin.forceActiveFocus(Qt.PopupFocusReason)
        menu.visible = false
        menu.destroy()
    }
    function choose(index: int): void {
        if (index < 0 || !menu.isEnabled(index))
            return
        const run = menu.entries[index].run
        menu.close()
        run()
    }

    Component.onCompleted: {
        menu.origin = menu.Window.activeFocusItem
        menu.forceActiveFocus(Qt.PopupFocusReason)
    }
    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_Down || event.key === Qt.Key_Right)
            menu.move(1)
        else if (event.key === Qt.Key_Up || event.key === Qt.Key_Left)
            menu.move(-1)
        else if ([Qt.Key_Return, Qt.Key_Enter, Qt.Key_Space].includes(event.key))
            menu.choose(menu.current)
        else if ([Qt.Key_Escape, Qt.Key_Tab, Qt.Key_Backtab].includes(event.key))
            menu.close()
    }

    Connections {
        target: menu.Window.window

        function onActiveChanged(): void {
            if (!menu.Window.active)
                menu.close()
        }
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onPressed: menu.close()
        onWheel: menu.close()
    }
    Rectangle {
        id: box

        x: Math.max(0, Math.min(menu.at.x, menu.width - width - Units.space4))
        y: Math.max(0, Math.min(menu.at.y, menu.height - height - Units.space4))
        width: list.width + 2 * Units.space4
        height: list.height + 2 * Units.space4
        radius: Units.radius10
        color: menu.island ? Theme.islandControl : Theme.surface
        border.width: Units.hairline
        border.color: menu.island ? Theme.islandControlPressed : Theme.fieldEdge

        Grid {
            id: list

            x: Units.space4
            y: Units.space4
            columns: menu.island ? menu.entries.length : 1

            Repeater {
                model: menu.entries

                Rectangle {
                    id: row

                    required property int index
                    required property var modelData

                    readonly property bool isChosen: menu.current === row.index

                    objectName: row.modelData.name
                    implicitWidth: menu.textX + Math.ceil(words.implicitWidth) + Units.space12
                    width: menu.island ? row.implicitWidth : menu.widest
                    height: Math.max(28, Units.scaled(28))
                    radius: Units.radius6
                    color: !row.isChosen ? "transparent"
                         : menu.island ? Theme.islandControlPressed : Theme.softFillHovered

                    Accessible.role: Accessible.MenuItem
                    Accessible.name: row.modelData.text
                    Accessible.checkable: menu.isChoice
                    Accessible.checked: menu.isChoice && row.modelData.checked
                    Accessible.focusable: true
                    Accessible.focused: row.isChosen
                    Accessible.onPressAction: menu.choose(row.index)
                    Component.onCompleted: menu.widest = Math.max(menu.widest, row.implicitWidth)

                    LineIcon {
                        x: Units.space8
                        anchors.verticalCenter: parent.verticalCenter
                        visible: menu.isChoice && row.modelData.checked
                        width: Units.iconSmall
                        height: width
                        name: "check"
                        color: words.color
                    }
                    Text {
                        id: words

                        anchors.left: parent.left
                        anchors.leftMargin: menu.textX
                        anchors.verticalCenter: parent.verticalCenter
                        opacity: menu.isEnabled(row.index) ? 1 : 0.45
                        text: row.modelData.text
                        textFormat: Text.PlainText
                        color: menu.island ? Theme.islandText : Theme.ink
                        font.pixelSize: Units.type13
                        Accessible.ignored: true
                    }
                    MouseArea {
                        anchors.fill: parent
                        acceptedButtons: Qt.LeftButton | Qt.RightButton
                        hoverEnabled: true
                        onEntered: menu.current = menu.isEnabled(row.index) ? row.index : -1
                        onClicked: menu.choose(row.index)
                    }
                }
            }
        }
    }
}

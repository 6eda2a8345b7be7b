// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// A card over its window, which waits behind it. Escape and a click beside the card dismiss it;
/// the keyboard stays inside. Fill the window with it.
FocusScope {
    id: sheet

    required property string accessibleName
    default property alias content: body.data
    property int sheetWidth: Units.sheetWidth

    /// Who has the keyboard in this window.
    readonly property Item keyboardItem: sheet.Window.activeFocusItem

    signal dismissed

    anchors.fill: parent

    Accessible.role: Accessible.Dialog
    Accessible.name: sheet.accessibleName

    Keys.onEscapePressed: sheet.dismissed()
    Component.onCompleted: body.forceActiveFocus(Qt.PopupFocusReason)
    onKeyboardItemChanged: holding.restart()

    function holdKeyboard(): void {
        for (let item = sheet.keyboardItem; item !== null; item = item.parent) {
            if (item === sheet)
                return
        }
        const first = body.nextItemInFocusChain(true)
        first.forceActiveFocus(Qt.TabFocusReason)
    }

    // not while the keyboard is still on its way
    Timer {
        id: holding

        interval: 0
        onTriggered: sheet.holdKeyboard()
    }
    Rectangle {
        anchors.fill: parent
        color: Theme.scrim

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            onClicked: sheet.dismissed()
            onWheel: wheel => { wheel.accepted = true }
        }
    }
    Rectangle {
        id: card

        anchors.centerIn: parent
        width: Math.min(sheet.sheetWidth, sheet.width - 2 * Units.space24)
        height: Math.min(body.childrenRect.height + 2 * Units.space24,
                         sheet.height - 2 * Units.space24)
        radius: Units.radius14
        color: Theme.surface
        border.width: Units.hairline
        border.color: Theme.hairline

        MouseArea {
            anchors.fill: parent
        }
        Item {
            id: body

            anchors.fill: parent
            anchors.margins: Units.space24
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Pill
import Vellumo.Ui

/// The notes entrance: a capsule that says how many notes there are, or the list of them. It fills
/// its panel, which changes size between the two.
Item {
    id: root

    required property NotesPillModel pill
    required property PillContainerView container
    required property BilingualText texts

    /// The attention state pulses once the pill is there.
    property bool pulse: false
    /// How much of the attention state's outline is seen.
    property real attention: 0

    readonly property bool isPill: root.container.mode === PillContainerView.Pill

    function settleAttention(): void {
        settling.stop()
        if (!pulsing.running)
            settling.start()
    }

    Component.onCompleted: root.pulse = true

    Binding {
        target: root.pill
        property: "textScale"
        value: Units.scaled(100) / 100
    }

    Rectangle {
        anchors.fill: parent
        radius: Units.radius22
        color: root.pill.pillHovered && !root.pill.expanded ? Theme.pillHovered
                                                            : Theme.islandGround
        border.width: Units.hairline
        border.color: Theme.islandEdge

        Behavior on color {
            enabled: Units.animated
            ColorAnimation { duration: Units.quick }
        }
    }

    PillLabel {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        width: Units.pillWidth
        height: Units.pillHeight
        visible: opacity > 0
        opacity: 1 - fade.value
        pill: root.pill
    }

    // The list has its final size from the start, and its panel uncovers it. What is uncovered keeps
    // clear of the rounded corners.
    Item {
        anchors.fill: parent
        anchors.margins: Units.cornerInset
        clip: true
        visible: fade.value > 0
        opacity: fade.value
        enabled: root.pill.expanded

        NotesList {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: -Units.cornerInset
            width: Units.listWidth
            height: root.pill.listHeight
            visible: !root.pill.showsMenu
            hasCards: !root.pill.showsMenu && (root.pill.expanded || fade.value > 0)
            pill: root.pill
            texts: root.texts
        }
        PillMenu {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            anchors.margins: Units.space12 - Units.space2 - Units.cornerInset
            visible: root.pill.showsMenu
            pill: root.pill
            texts: root.texts
        }
    }

    // the attention state
    Rectangle {
        objectName: "outline"
        anchors.fill: parent
        visible: opacity > 0
        opacity: root.attention * (1 - fade.value)
        radius: Units.radius22
        color: "transparent"
        border.color: Theme.islandAccent
        border.width: Units.pillOutline
        border.pixelAligned: false
    }
    SequentialAnimation {
        id: pulsing

        running: root.pulse && root.pill.highlighted && !root.pill.expanded && Units.animated
        loops: Animation.Infinite
        onRunningChanged: root.settleAttention()

        NumberAnimation {
            target: root
            property: "attention"
            from: 1
            to: 0.3
            duration: Units.pulse
            easing.type: Easing.InOutQuad
        }
        NumberAnimation {
            target: root
            property: "attention"
            to: 1
            duration: Units.pulse
            easing.type: Easing.InOutQuad
        }
    }
    NumberAnimation {
        id: settling

        target: root
        property: "attention"
        to: root.pill.highlighted ? 1 : 0
        duration: Units.quick
    }
    Connections {
        target: root.pill

        function onHighlightedChanged(): void {
            root.settleAttention()
        }
    }

    MouseArea {
        id: mouse

        anchors.fill: parent
        enabled: root.isPill

        Accessible.role: Accessible.Button
        Accessible.name: root.pill.label
        Accessible.ignored: !root.isPill
        Accessible.onPressAction: root.container.press()

        onPressed: event => root.container.mouseDown(Qt.point(event.x, event.y))
        onPositionChanged: event => root.container.mouseDragged(Qt.point(event.x, event.y))
        onReleased: root.container.mouseUp()
        onCanceled: root.container.mouseCanceled()
    }
    MouseArea {
        anchors.fill: parent
        enabled: root.isPill
        acceptedButtons: Qt.RightButton
        onClicked: root.container.askForMenu()
    }
    HoverHandler {
        id: hover

        onHoveredChanged: {
            if (hover.hovered)
                root.container.mouseEntered()
            else
                root.container.mouseExited()
        }
    }

    readonly property CrossFade fade: CrossFade {
        id: fade

        shown: root.pill.expanded
    }
}

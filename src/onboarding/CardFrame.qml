// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Onboarding
import Vellumo.Ui

/// What every card has: a title, a line below it, its contents, and a way on. What does not fit is
/// scrolled; the way on stays.
FocusScope {
    id: frame

    required property OnboardingWindowController flow
    required property BilingualText texts

    readonly property bool english: frame.texts.english
    property string title
    property string subtitle: ""
    property bool centered: false ///< in the height that there is
    property int titleSize: Units.type30
    property string continueText: frame.english ? "Continue" : "继续"
    property string continueGlyph: ""
    property string continueName: "continue"
    property bool canContinue: true
    property bool drawsContinue: frame.canContinue ///< in the colour of what is to be done next
    property string error: ""
    property string quietText: ""
    property string quietName: "skip"
    property string secondQuietText: ""
    property string secondQuietName: "skipSecond"
    default property alias contents: holder.data
    /// Too low for what only decorates.
    readonly property bool isCramped: frame.height < Units.onboardingRoom

    signal proceeded
    signal skipped
    signal skippedSecond

    function proceed(): void {
        if (frame.canContinue)
            frame.proceeded()
    }

    /// Shows what has come by keyboard.
    function reveal(item: Item): void {
        let above = item
        while (above && above !== column)
            above = above.parent
        if (!above)
            return
        const top = item.mapToItem(page.contentItem, 0, 0).y - Units.space8
        const bottom = top + item.height + 2 * Units.space8
        page.contentY = Math.max(0, Math.min(top, Math.max(page.contentY, bottom - page.height)))
    }
    function scrollBy(distance: real): void {
        const end = Math.max(0, page.contentHeight - page.height)
        page.contentY = Math.max(0, Math.min(end, page.contentY + distance))
    }

    Window.onActiveFocusItemChanged: frame.reveal(Window.activeFocusItem)
    Keys.onUpPressed: frame.scrollBy(-Units.space48)
    Keys.onDownPressed: frame.scrollBy(Units.space48)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageDown || event.key === Qt.Key_PageUp) {
            frame.scrollBy(event.key === Qt.Key_PageDown ? page.height : -page.height)
            event.accepted = true
        }
    }

    Flickable {
        id: page

        anchors.top: parent.top
        anchors.bottom: footer.top
        anchors.bottomMargin: Units.space12
        width: parent.width
        contentWidth: width
        contentHeight: column.y + column.height + Units.space8
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: interactive

        Column {
            id: column

            y: frame.centered
                ? Math.max(Units.space8, Math.round((page.height - height) / 2) - Units.space16)
                : Units.space8
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(Units.onboardingColumn, page.width - 2 * Units.space24)
            spacing: frame.isCramped ? Units.space16 : Units.space24

            Column {
                width: parent.width
                spacing: Units.space8

                Label {
                    objectName: "title"
                    width: parent.width
                    text: frame.title
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    font.pixelSize: frame.isCramped ? Units.type20 : frame.titleSize
                    font.letterSpacing: Units.tightTracking
                    font.weight: Font.Bold
                    Accessible.role: Accessible.Heading
                }
                Label {
                    objectName: "subtitle"
                    width: parent.width
                    visible: frame.subtitle.length > 0
                    text: frame.subtitle
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    color: Theme.secondInk
                    font.pixelSize: Units.type15
                    lineFactor: Units.readingLine
                }
            }
            Column {
                id: holder

                width: parent.width
                spacing: Units.space16
            }
        }
    }
    ScrollThumb {
        anchors.right: parent.right
        anchors.rightMargin: Units.space2
        y: page.y
        flickable: page
        color: Theme.thumb
        activeColor: Theme.secondInk
    }

    Column {
        id: footer

        anchors.bottom: parent.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(Units.onboardingButton, frame.width - 2 * Units.space24)
        spacing: Units.space4

        Item {
            width: parent.width
            height: errorLine.visible ? errorLine.height + Units.space8 : 0

            ErrorLine {
                id: errorLine

                objectName: "signInErrorLabel"
                width: parent.width
                centered: true
                text: frame.error
            }
        }
        Item {
            width: parent.width
            height: onward.height

            Rectangle { // so that a button that does not work yet has a place
                anchors.fill: parent
                visible: !frame.canContinue
                radius: Units.radius10
                color: Theme.softFillHovered
            }
            TextButton {
                id: onward

                objectName: frame.continueName
                width: parent.width
                large: true
                primary: frame.drawsContinue
                enabled: frame.canContinue
                glyph: frame.continueGlyph
                text: frame.continueText
                onClicked: frame.proceed()
            }
        }
        Item {
            width: parent.width
            // also when empty, so that the button above stays in its place
            height: frame.isCramped && frame.quietText.length === 0 ? 0 : Units.button

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: Units.space8

                TextButton {
                    objectName: frame.quietName
                    visible: frame.quietText.length > 0
                    quiet: true
                    text: frame.quietText
                    onClicked: frame.skipped()
                }
                TextButton {
                    objectName: frame.secondQuietName
                    visible: frame.secondQuietText.length > 0
                    quiet: true
                    text: frame.secondQuietText
                    onClicked: frame.skippedSecond()
                }
            }
        }
    }
}

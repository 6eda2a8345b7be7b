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
    property bool centered: false ///< the contents, in the height below the title
    property bool low: false ///< as near to the way on as it can be
    property int titleSize: Units.type30
    property string continueText: frame.english ? "Continue" : "继续"
    property string continueIcon: "" ///< has its own colours
    property string continueName: "continue"
    property bool canContinue: true
    property bool drawsContinue: frame.canContinue ///< in the colour of what is to be done next
    property bool reportsState: false ///< the button says what goes on, although it cannot be pressed
    property string error: ""
    property bool keepsErrorLine: false ///< so that nothing moves when an error comes
    property string quietText: ""
    property string quietName: "skip"
    property bool isQuietOver: false ///< it has become needless, but keeps its place
    property string secondQuietText: ""
    property string secondQuietName: "skipSecond"
    property string thirdQuietText: ""
    property string thirdQuietName: "skipThird"
    default property alias contents: holder.data
    readonly property bool hasQuiet: frame.quietText.length + frame.secondQuietText.length
        + frame.thirdQuietText.length > 0
    /// Too low for what only decorates.
    readonly property bool isCramped: Window.height < Units.onboardingRoom

    signal proceeded
    signal skipped
    signal skippedSecond
    signal skippedThird

    function proceed(): void {
        if (frame.canContinue)
            frame.proceeded()
    }

    Keys.onPressed: event => { event.accepted = page.scrollByKey(event.key) }

    FollowingFlickable {
        id: page

        anchors.top: parent.top
        anchors.bottom: footer.top
        anchors.bottomMargin: Units.space12
        width: parent.width
        contentHeight: column.y + column.height + Units.space8
        room: Units.space8
        interactive: contentHeight > height
        clip: interactive

        Column {
            id: column

            y: Math.max(Units.space8, frame.low ? page.height - height - Units.space8 : 0)
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(Units.onboardingColumn, page.width - 2 * Units.space24)
            spacing: frame.isCramped ? Units.space16 : Units.space24

            Column {
                id: titles

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
            Item { // so that titles stay at one height from card to card
                width: 1
                height: Math.max(0, Math.round((page.height - titles.height - holder.height) / 2)
                                    - Units.space8 - column.spacing)
                visible: frame.centered
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

    Item {
        id: footer

        // where height is scarce, everything in one line
        readonly property bool isOneLine: frame.isCramped && frame.hasQuiet
            && onward.implicitWidth + Units.space8 + quiet.width <= footer.width
        readonly property int errorRoom: errorLine.visible ? errorLine.height + Units.space8
            : frame.keepsErrorLine ? Math.round(Units.type12 * Units.readingLine) + Units.space8 : 0
        // also without these, so that the button stays where it is from card to card
        readonly property int quietRoom: footer.isOneLine || (frame.isCramped && !frame.hasQuiet)
            ? 0 : Units.space4 + Math.max(Units.button, quiet.height)

        // A cramped window covers most of the screen, whose lower right corner is the pill's.
        readonly property int pillRoom: frame.isCramped && frame.hasQuiet
            ? Units.pillWidth + Units.space16 : 0

        anchors.bottom: parent.bottom
        x: Units.space24
        width: frame.width - 2 * Units.space24 - footer.pillRoom
        height: footer.errorRoom + onward.height + footer.quietRoom

        ErrorLine {
            id: errorLine

            objectName: "signInErrorLabel"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(Units.onboardingButton, parent.width)
            centered: true
            text: frame.error
        }
        Rectangle { // so that a button that does not work yet has a place
            anchors.fill: onward
            visible: !frame.canContinue
            radius: Units.radius10
            color: Theme.softFillHovered
        }
        TextButton {
            id: onward

            readonly property int beside: footer.isOneLine ? quiet.width + Units.space8 : 0

            objectName: frame.continueName
            x: Math.round((parent.width - width - onward.beside) / 2)
            y: footer.errorRoom
            width: Math.min(Units.onboardingButton, parent.width - onward.beside)
            large: true
            primary: frame.drawsContinue
            enabled: frame.canContinue
            opacity: frame.canContinue || frame.reportsState ? 1 : 0.45
            icon: frame.continueIcon
            iconHasColors: true
            text: frame.continueText
            onClicked: frame.proceed()
        }
        QuietChoices {
            id: quiet

            x: footer.isOneLine ? onward.x + onward.width + Units.space8
                                : Math.round((parent.width - width) / 2)
            y: footer.isOneLine ? onward.y + Math.round((onward.height - height) / 2)
                                : onward.y + onward.height + Units.space4
            room: footer.width
            firstText: frame.quietText
            firstName: frame.quietName
            isFirstOver: frame.isQuietOver
            secondText: frame.secondQuietText
            secondName: frame.secondQuietName
            thirdText: frame.thirdQuietText
            thirdName: frame.thirdQuietName
            onFirstChosen: frame.skipped()
            onSecondChosen: frame.skippedSecond()
            onThirdChosen: frame.skippedThird()
        }
    }
}

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick
import Vellumo.Look

/// Every size and duration of the program, in device-independent pixels and milliseconds.
QtObject {
    id: units

    // type follows the desktop's text size
    readonly property int type34: units.scaled(34)
    readonly property int type30: units.scaled(30)
    readonly property int type24: units.scaled(24)
    readonly property int type20: units.scaled(20)
    readonly property int type17: units.scaled(17)
    readonly property int type15: units.scaled(15)
    readonly property int type14: units.scaled(14)
    readonly property int type13: units.scaled(13)
    readonly property int type12: units.scaled(12)
    readonly property int type11: units.scaled(11)
    readonly property int type10: units.scaled(10)
    /// Tracking for type from 24 up.
    readonly property real tightTracking: -0.3
    /// Line distances as a factor of the type size.
    readonly property real readingLine: 1.55
    readonly property real titleLine: 1.42
    readonly property real cardLine: 1.38

    readonly property int space2: 2
    readonly property int space4: 4
    readonly property int space8: 8
    readonly property int space12: 12
    readonly property int space16: 16
    readonly property int space20: 20
    readonly property int space24: 24
    readonly property int space32: 32
    readonly property int space48: 48

    readonly property int radius3: 3
    readonly property int radius6: 6
    readonly property int radius10: 10
    readonly property int radius14: 14
    readonly property int radius22: 22
    readonly property int hairline: 1

    readonly property int focusRing: 2
    readonly property int focusGap: 2
    readonly property int primaryButton: Math.max(44, units.scaled(40))
    readonly property int iconSmall: units.scaled(14)
    readonly property int icon: units.scaled(16)
    readonly property int button: Math.max(36, units.scaled(34))
    readonly property int dot: 6
    readonly property int closeButton: units.scaled(22)
    readonly property int closeIcon: units.scaled(10)
    readonly property int submitButton: Math.max(26, units.followUpField - 10)
    readonly property int submitIcon: units.scaled(14)
    /// What an arrow key scrolls, on a page and in the island.
    readonly property int scrollStep: 60
    readonly property int islandScrollStep: 40
    /// What stays visible when a key scrolls a page.
    readonly property int scrollOverlap: 80
    /// At least, for the answers of a dialog.
    readonly property int dialogButton: 96
    readonly property int followUpField: Math.max(36, units.scaled(34))
    readonly property int skeletonLine: 10
    readonly property int scrollThumb: 4

    readonly property int dialogWidth: Math.max(460, Math.min(units.scaled(460), 640))
    readonly property int alertWidth: Math.max(400, Math.min(units.scaled(400), 640))
    readonly property int progressLine: 3
    readonly property int releaseNotes: units.scaled(200)

    /// How long a button says what it has done.
    readonly property int feedback: 1600
    readonly property int progressRound: 1400

    // the main window
    readonly property int windowWidth: 1040
    readonly property int windowHeight: 720
    readonly property int minWindowWidth: Math.min(960, units.scaled(640))
    readonly property int minWindowHeight: Math.min(520, units.scaled(440))
    readonly property int sideBar: units.scaled(208)
    readonly property int navigationItem: Math.max(36, units.scaled(34))
    readonly property int pageWidth: units.scaled(752)
    readonly property int pageTop: 36
    readonly property int noteWidth: units.scaled(680)
    /// From this width of a page on, the list of notes takes `splitList` beside the open note.
    readonly property int splitWidth: units.scaled(940)
    readonly property int splitList: units.scaled(380)
    readonly property int noteRow: units.scaled(66)
    readonly property int signInWidth: units.scaled(340)
    readonly property int sheetWidth: units.scaled(380)
    readonly property int tile: units.scaled(144)
    readonly property int statusDot: 8
    readonly property int statusMark: units.scaled(18)
    readonly property int switchHeight: Math.max(20, units.scaled(20))
    readonly property int bar: 3
    readonly property int calendarCell: units.scaled(15)
    readonly property int calendarGap: 3
    readonly property int monthBars: units.scaled(120)
    readonly property int shareBar: 10

    // the window of the first run
    readonly property int onboardingWidth: units.scaled(680)
    readonly property int onboardingHeight: units.scaled(560)
    readonly property int minOnboardingWidth: Math.min(960, units.scaled(480))
    readonly property int minOnboardingHeight: Math.min(520, units.scaled(400))
    /// A lower window leaves out what only decorates.
    readonly property int onboardingRoom: units.scaled(490)
    /// What the panel takes of the screen above the window when it shows how it looks.
    readonly property int onboardingPanelRoom: units.scaled(180)
    readonly property int onboardingColumn: units.scaled(534)
    readonly property int onboardingButton: units.scaled(340)
    readonly property int surveyChip: Math.max(40, units.scaled(36))
    readonly property int onboardingDrawing: units.scaled(168)

    // the pill and its list: the sizes of their panel
    readonly property int pillWidth: 118
    readonly property int pillHeight: 44
    readonly property int pillDot: 7
    readonly property real pillOutline: 2.5
    readonly property int listWidth: 340
    readonly property int listButton: Math.max(28, units.scaled(26))
    readonly property int cardGap: 3
    readonly property int demoFinger: 40
    /// Smallest type in panels of a fixed size.
    readonly property int minType: 10
    /// Inside a corner of radius22, a corner inset by this lies on the ground.
    readonly property int cornerInset: 7

    readonly property int quick: SystemLook.reducedMotion ? 0 : 120
    /// Within this a new page has its final layout.
    readonly property int layoutTime: 300
    readonly property int move: SystemLook.reducedMotion ? 0 : 260
    readonly property int pulse: 600
    readonly property bool animated: !SystemLook.reducedMotion

    readonly property string chineseFamily: "Noto Sans CJK SC"

    /// Whether a text needs the quotation marks of a Chinese font, which are as wide as its
    /// characters. They are the same characters as the Latin ones.
    function hasChineseQuotes(text: string): bool {
        return /[\u3000-\u9fff\uff00-\uffef][“”]|[“”][\u3000-\u9fff\uff00-\uffef]/.test(text)
    }
    function scaled(size: int): int {
        return Math.round(size * SystemLook.textScale)
    }
}

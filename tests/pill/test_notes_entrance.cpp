// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The rules of the notes pill on a fake desktop, without window or drawing.

#include "pill/NotesEntranceController.h"
#include "pill/PillGeometry.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeFloatingWindows.h"
#include "platform/fake/FakeScreens.h"
#include "settings/SettingsKeys.h"
#include "ui/BilingualText.h"
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

namespace {

constexpr auto originKey = "notesPillOrigin"_L1;
const Rect defaultPill{1440 - 118 - 32, 32, 118, 44};
const Event escape{.type = EventType::KeyDown, .keyCode = KeyCode::Escape};
const Event letter{.type = EventType::KeyDown, .keyCode = KeyCode::Other};
const Event leftDown{.type = EventType::LeftMouseDown};
const Event moved{.type = EventType::MouseMoved};

ReadingNote noteOf(const QString &source)
{
    return {QUuid::createUuid(), source, {}, {}, 0, {}};
}

struct Desk {
    FakeFloatingWindows windows;
    FakeScreens screens;
    FakeEventMonitors monitors;
    FakeDefaultsStore defaults;
    FakeClock clock;
    BilingualText texts{[] { return u"English"_s; }};
    int opened = 0;
    QStringList chosen;
    NotesEntranceController entrance{{windows, screens, monitors, defaults, clock, texts}};

    void show()
    {
        entrance.show(3, [this] { ++opened; });
    }
    void list(int notes)
    {
        entrance.showNotesList(
            QList<ReadingNote>(notes, noteOf(u"source"_s)), [this](const ReadingNote &note) {
                chosen << note.sourceText
                        + (entrance.model().isExpanded() ? u" before folding"_s : QString());
            });
    }
    FakeFloatingPanel &panel() { return *windows.panels.constFirst(); }
    NotesPillModel &model()
    {
        return *panel().content.properties.value(u"pill"_s).value<NotesPillModel *>();
    }
    PillContainerView &container()
    {
        return *panel().content.properties.value(u"container"_s).value<PillContainerView *>();
    }
    bool isPill() { return container().mode() == PillContainerView::Mode::Pill; }
};

} // namespace

class NotesEntranceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void restoresItsPlace()
    {
        const auto at = [](double x, double y) { return Rect{x, y, 118, 44}; };
        const std::pair<QVariant, Rect> rows[] = {
            {{}, defaultPill},
            {QVariantList{100.5, 200}, at(100.5, 200)},
            {QStringList{u"100.5"_s, u"-3e1"_s}, at(100.5, 8)}, // as a file has them
            {QVariantList{1e7, -1e7}, at(1440 - 118 - 8, 8)},
            // malformed
            {QVariantList{1, 2, 3}, defaultPill},
            {QVariantList{1}, defaultPill},
            {QVariantList{1, u"two"_s}, defaultPill},
            {QVariantList{1, u"nan"_s}, defaultPill},
            {QVariantList{u"inf"_s, 2}, defaultPill},
            {u"100, 200"_s, defaultPill},
            {QVariantMap{{u"x"_s, 1}, {u"y"_s, 2}}, defaultPill},
        };
        for (const auto &[stored, frame] : rows) {
            Desk desk;
            desk.defaults.setValue(originKey, stored);
            desk.show();
            QCOMPARE(desk.panel().frame(), frame);
            QVERIFY(desk.panel().isVisible() && !desk.panel().isKey);
        }
        Desk bare;
        bare.screens.list.clear();
        bare.show();
        QCOMPARE(bare.panel().frame(), (Rect{1200 - 118 - 32, 32, 118, 44}));
    }

    void distinguishesClickAndDrag()
    {
        const std::pair<QList<QPointF>, bool> rows[] = {
            {{}, false},        {{{24, 20}, {20, 16}}, false}, {{{24.01, 20}}, true},
            {{{23, 23}}, true}, {{{20, 30}, {20, 20}}, true},
        };
        for (const auto &[motions, isDrag] : rows) {
            Desk desk;
            desk.show();
            desk.container().mouseDown({20, 20});
            for (const QPointF &point : motions)
                desk.container().mouseDragged(point);
            desk.container().mouseUp();
            QCOMPARE(desk.panel().dragsBegun, isDrag ? 1 : 0);
            QCOMPARE(desk.opened, isDrag ? 0 : 1);

            // a drag whose release never came does not outlive the next press
            desk.container().mouseDown({20, 20});
            desk.container().mouseDragged({40, 20});
            desk.container().mouseDown({20, 20});
            desk.container().mouseUp();
            QCOMPARE(desk.opened, isDrag ? 1 : 2);
        }
    }

    void listGrowsFromThePill()
    {
        const Point usual{1000, 100};
        const struct {
            Point pill;
            int notes;
            Rect frame;
        } rows[] = {
            {usual, 0, {778, 100, 340, 130}},   {usual, 1, {778, 100, 340, 138}},
            {usual, 5, {778, 100, 340, 426}},   {usual, 6, {778, 100, 340, 480}},
            {{20, 800}, 9, {8, 388, 340, 480}}, // clamped at the upper left
        };
        for (const auto &[pill, notes, frame] : rows) {
            Desk desk;
            desk.defaults.setValue(originKey, pillGeometry::storableOrigin(pill));
            desk.show();
            desk.list(notes);
            QCOMPARE(desk.panel().frame(), frame);
            QVERIFY(desk.panel().lastFrameWasAnimated && !desk.isPill());
            desk.entrance.collapse();
            QCOMPARE(desk.panel().frame(),
                     pillGeometry::pillAt(pill)); // wherever the list opens
            QVERIFY(!desk.isPill());
            QVERIFY(desk.panel().finishAnimation());
            QVERIFY(desk.isPill());
            QCOMPARE(desk.defaults.value(originKey), pillGeometry::storableOrigin(pill));
        }
    }

    void savesOnlyWhatTheUserMoved()
    {
        Desk desk;
        desk.show();
        desk.panel().letUserMoveTo({500, 300, 118, 44});
        const QVariant saved = pillGeometry::storableOrigin({500, 300});
        QCOMPARE(desk.defaults.value(originKey), saved);
        desk.list(2);
        desk.panel().letUserMoveTo({50, 60, 340, 210});
        desk.entrance.collapse();
        desk.panel().finishAnimation();
        QCOMPARE(desk.defaults.value(originKey), saved);
        QCOMPARE(desk.panel().frame(), (Rect{500, 300, 118, 44}));
        desk.panel().letManagerMoveTo({10, 20, 118, 44});
        QCOMPARE(desk.defaults.value(originKey), saved);
        desk.panel().letUserMoveTo({70, 80, 118, 44});
        QCOMPARE(desk.defaults.value(originKey), pillGeometry::storableOrigin({70, 80}));
    }

    void foldsByTheOutsideRule()
    {
        Desk desk;
        desk.show();
        desk.list(2);
        QCOMPARE(desk.monitors.globalMasks(), (QList<EventMask>{0x20, 0xA, 0x400000}));
        QCOMPARE(desk.monitors.localMasks(), (QList<EventMask>{0x20, 0x40040A}));

        desk.screens.pointer = {1300, 100}; // inside
        QVERIFY(desk.monitors.sendLocal(leftDown) && desk.monitors.sendLocal(letter));
        desk.monitors.sendGlobal(leftDown);
        QVERIFY(desk.model().isExpanded());
        QVERIFY(!desk.monitors.sendLocal(escape));
        QVERIFY(!desk.model().isExpanded());
        QCOMPARE(desk.monitors.globalMasks(), QList<EventMask>{0x20});
        QVERIFY(desk.monitors.sendLocal(escape));

        desk.screens.pointer = {10, 10};
        for (const bool isGlobal : {true, false}) {
            desk.list(2);
            if (isGlobal) {
                desk.monitors.sendGlobal({.type = EventType::ScrollWheel});
            } else {
                QVERIFY(desk.monitors.sendLocal(letter));
            }
            QVERIFY(!desk.model().isExpanded());
        }
    }

    void choosingFoldsFirst()
    {
        Desk desk;
        desk.show();
        desk.list(2);
        desk.model().select(1);
        desk.model().select(2); // there is none
        QCOMPARE(desk.chosen, QStringList{u"source"_s});
    }

    void opensItsMenu()
    {
        Desk desk;
        desk.show();
        QSignalSpy window(&desk.entrance, &NotesEntranceController::windowRequested);
        QSignalSpy quit(&desk.entrance, &NotesEntranceController::quitRequested);
        desk.container().askForMenu();
        QVERIFY(desk.model().showsMenu() && desk.model().isExpanded());
        QCOMPARE(desk.panel().frame(), (Rect{defaultPill.maxX() - 200, 32, 200, 128}));
        desk.container().askForMenu(); // is open
        desk.monitors.sendLocal(escape);
        QVERIFY(desk.panel().finishAnimation());
        QCOMPARE(desk.panel().frame(), defaultPill);

        const QSignalSpy laidOut(&desk.model(), &NotesPillModel::notesChanged);
        desk.model().setTextScale(1.5);
        QCOMPARE(laidOut.size(), 1);
        desk.container().askForMenu();
        QCOMPARE(desk.panel().frame(), (Rect{defaultPill.maxX() - 300, 32, 300, 182}));
        desk.monitors.sendLocal(escape);
        desk.panel().finishAnimation();

        desk.list(1);
        QVERIFY(!desk.model().showsMenu());
        Q_EMIT desk.model().windowRequested();
        QVERIFY(!desk.model().isExpanded());
        desk.panel().finishAnimation();
        desk.container().mouseDown({1, 1});
        desk.container().askForMenu(); // while the other button is held
        QVERIFY(!desk.model().isExpanded());
        desk.container().mouseCanceled();
        desk.container().askForMenu();
        Q_EMIT desk.model().quitRequested();
        QCOMPARE(std::pair(window.size(), quit.size()), std::pair(qsizetype{1}, qsizetype{1}));
    }

    void canBeHidden()
    {
        Desk desk;
        desk.show();
        desk.container().askForMenu();
        Q_EMIT desk.model().hidingRequested();
        QVERIFY(desk.panel().isVisible()); // until it is folded
        desk.panel().finishAnimation();
        QVERIFY(!desk.panel().isVisible());
        desk.show();
        QVERIFY(!desk.panel().isVisible());
        desk.list(1); // the list is asked for
        QVERIFY(desk.panel().isVisible());
        desk.entrance.collapse();
        desk.panel().finishAnimation();
        QVERIFY(!desk.panel().isVisible());
        settings::showsPill.set(desk.defaults, true);
        QVERIFY(desk.panel().isVisible());
        settings::showsPill.set(desk.defaults, false);
        QVERIFY(!desk.panel().isVisible());
    }

    void hoverAndCursorFollowThePointer()
    {
        Desk desk;
        desk.show();
        for (const bool isInside : {true, false}) {
            desk.screens.pointer = isInside ? Point{defaultPill.midX(), 40} : Point{5, 5};
            QVERIFY(desk.monitors.sendLocal(moved));
            QCOMPARE(desk.model().isPillHovered(), isInside);
            QCOMPARE(desk.panel().cursor == PanelCursor::PointingHand, isInside);
        }
        desk.list(1);
        desk.container().mouseEntered();
        QVERIFY(!desk.model().isPillHovered());
        desk.screens.pointer = {defaultPill.midX(), 40}; // where the pill will be
        desk.entrance.collapse();
        desk.panel().finishAnimation();
        QVERIFY(desk.model().isPillHovered());
        desk.container().mouseExited();
        QVERIFY(!desk.model().isPillHovered());
        QCOMPARE(desk.panel().cursor, PanelCursor::Arrow);
    }

    void comesBackWhenItsScreenGoes()
    {
        Desk desk;
        const Screen other{{1440, 0, 1920, 1080}, {1440, 0, 1920, 1080}, 0};
        const QList<Screen> both{desk.screens.list.first(), other};
        desk.screens.list = both;
        desk.show();
        const Rect far{3000, 500, 118, 44};
        desk.panel().letUserMoveTo(far);
        desk.list(2);
        desk.screens.list = {both.first()};
        Q_EMIT desk.screens.changed();
        desk.panel().finishAnimation();
        QCOMPARE(desk.panel().frame(), (Rect{1440 - 118 - 8, 500, 118, 44}));
        desk.screens.list = both;
        Q_EMIT desk.screens.changed();
        QCOMPARE(desk.panel().frame(), far);

        // once more while the list is folding
        desk.list(2);
        desk.entrance.collapse();
        desk.screens.list = {{{0, 0, 800, 600}, {0, 0, 800, 576}, 0}};
        Q_EMIT desk.screens.changed();
        QVERIFY(desk.panel().finishAnimation() && desk.isPill());
        QCOMPARE(desk.panel().frame(), (Rect{800 - 118 - 8, 500, 118, 44}));
    }

    void playsTheDemonstrationOnce()
    {
        Desk desk;
        int ended = 0;
        const auto play = [&] {
            desk.entrance.playOnboardingDemo(noteOf(u"sample"_s), [&ended] { ++ended; });
        };
        play(); // no panel yet
        QCOMPARE(ended, 1);
        desk.show();
        play();
        play(); // while one runs
        QCOMPARE(ended, 2);
        const auto finger = desk.windows.panels.last();
        QCOMPARE(desk.windows.panels.size(), 2);
        QCOMPARE(finger->frame(), (Rect{defaultPill.midX() - 20, defaultPill.midY() - 64, 52, 52}));
        QVERIFY(finger->style.ignoresMouseEvents && finger->lastFrameWasAnimated);

        desk.clock.advance(1149ms);
        QVERIFY(!desk.model().isPillHovered());
        desk.clock.advance(1ms);
        QVERIFY(desk.model().isPillHovered());
        desk.clock.advance(299ms);
        QVERIFY(!desk.model().isExpanded());
        desk.clock.advance(1ms);
        QVERIFY(desk.model().isExpanded() && !desk.model().isPillHovered());
        QCOMPARE(desk.model().notes().constFirst().sourceText, u"sample"_s);
        desk.clock.advance(2199ms);
        QVERIFY(desk.model().isExpanded());
        desk.clock.advance(1ms);
        QVERIFY(!desk.model().isExpanded());
        QCOMPARE(finger->alpha, 0.0);
        QCOMPARE(ended, 2);
        QVERIFY(finger->finishFading());
        QCOMPARE(ended, 3);
        QTRY_VERIFY(!finger);
        play();
        QCOMPARE(desk.windows.panels.size(), 3);
    }

    void endsTheDemonstrationAtAnyStep()
    {
        // the finger glides, touches, the list is open, the finger fades
        for (const auto time : {500ms, 1200ms, 2000ms, 3700ms}) {
            Desk desk;
            desk.show();
            desk.entrance.endOnboardingDemo(); // none runs
            int ended = 0;
            desk.entrance.playOnboardingDemo(noteOf(u"sample"_s), [&ended] { ++ended; });
            const auto finger = desk.windows.panels.last();
            desk.clock.advance(time);
            desk.entrance.endOnboardingDemo();
            desk.entrance.endOnboardingDemo();
            desk.clock.advance(10s);
            QVERIFY(!desk.model().isExpanded() && !desk.model().isPillHovered());
            QCOMPARE(ended, 0);
            QVERIFY(finger->finishFading());
            QTRY_VERIFY(!finger);
            QCOMPARE(ended, 1);
        }
    }

    void describesANote()
    {
        Desk desk;
        desk.show();
        ReadingNote first = noteOf(u" a\r\n\tb"_s + QString(100000, u'x'));
        first.translation = u"translated"_s;
        first.followUps.resize(2);
        ReadingNote second = first;
        second.explanation = u"explained"_s;
        desk.entrance.showNotesList({first, second}, {});
        const NoteListModel &rows = *static_cast<NoteListModel *>(desk.model().rows());
        QCOMPARE(rows.data(rows.index(0), NoteListModel::Detail), u"translated"_s);
        QCOMPARE(rows.data(rows.index(1), NoteListModel::Detail), u"explained"_s);
        QCOMPARE(rows.data(rows.index(0), NoteListModel::Asked), u"↩ 2"_s);
        const QString shown = rows.data(rows.index(0), NoteListModel::SourceText).toString();
        QVERIFY(shown.startsWith("a bxx"_L1) && shown.endsWith(u'…') && shown.size() < 300);
    }
};

QTEST_GUILESS_MAIN(NotesEntranceTest)
#include "test_notes_entrance.moc"

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The rules of the notes pill against a fake desktop: no window, no drawing.

#include "pill/NotesEntranceController.h"
#include "pill/PillGeometry.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeFloatingWindows.h"
#include "platform/fake/FakeScreens.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "ui/BilingualText.h"
#include <QTemporaryDir>
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

ReadingNote noteOf(const QString &source, const QString &translation = {},
                   const QString &explanation = {})
{
    return {QUuid::createUuid(), source, translation, explanation, 0, {}};
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
    void restoresItsPlace_data();
    void restoresItsPlace();
    void keepsItsPlaceInAFile();
    void tellsAClickFromADrag_data();
    void tellsAClickFromADrag();
    void listGrowsFromThePill_data();
    void listGrowsFromThePill();
    void savesOnlyWhatTheUserMoved();
    void foldsByTheOutsideRule();
    void choosingFoldsFirst();
    void hoverAndCursorFollowThePointer();
    void comesBackWhenItsScreenGoes();
    void playsTheDemonstrationOnce();
    void endsTheDemonstrationAtAnyStep_data();
    void endsTheDemonstrationAtAnyStep();
    void describesANote();
};

void NotesEntranceTest::restoresItsPlace_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<Rect>("frame");
    const auto at = [](double x, double y) { return Rect{x, y, 118, 44}; };
    QTest::newRow("nothing stored") << QVariant() << defaultPill;
    QTest::newRow("numbers") << QVariant(QVariantList{100.5, 200}) << at(100.5, 200);
    QTest::newRow("numbers as a file tells them")
        << QVariant(QStringList{u"100.5"_s, u"-3e1"_s}) << at(100.5, 8);
    QTest::newRow("far away") << QVariant(QVariantList{1e7, -1e7}) << at(1440 - 118 - 8, 8);
    const QVariant malformed[] = {QVariantList{1, 2, 3},
                                  QVariantList{1},
                                  QVariantList{1, u"two"_s},
                                  QVariantList{1, QVariantList{2}},
                                  QVariantList{1, u"nan"_s},
                                  QVariantList{u"inf"_s, 2},
                                  u"100, 200"_s,
                                  7.5,
                                  QVariantMap{{u"x"_s, 1}, {u"y"_s, 2}}};
    int row = 0;
    for (const QVariant &value : malformed) {
        QTest::addRow("malformed %d", ++row) << value << defaultPill;
    }
}

void NotesEntranceTest::restoresItsPlace()
{
    QFETCH(QVariant, stored);
    QFETCH(Rect, frame);
    Desk desk;
    desk.defaults.setValue(originKey, stored);
    desk.show();
    QCOMPARE(desk.panel().frame(), frame);
    QVERIFY(desk.panel().isVisible() && !desk.panel().isKey);

    Desk bare;
    bare.screens.list.clear();
    bare.show();
    QCOMPARE(bare.panel().frame(), (Rect{1200 - 118 - 32, 32, 118, 44}));
}

void NotesEntranceTest::keepsItsPlaceInAFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"settings.ini"_s);
    const Point place{1234.5, -17};
    SettingsDefaultsStore(path).setValue(originKey, pillGeometry::storableOrigin(place));
    const SettingsDefaultsStore next(path);
    QCOMPARE(pillGeometry::storedOrigin(next.value(originKey)), place);
}

void NotesEntranceTest::tellsAClickFromADrag_data()
{
    QTest::addColumn<QList<QPointF>>("motions");
    QTest::addColumn<bool>("isDrag");
    QTest::newRow("no motion") << QList<QPointF>{} << false;
    QTest::newRow("just not far enough") << QList<QPointF>{{24, 20}, {20, 16}} << false;
    QTest::newRow("just far enough") << QList<QPointF>{{24.01, 20}} << true;
    QTest::newRow("far in both directions") << QList<QPointF>{{23, 23}} << true;
    QTest::newRow("far, and back again") << QList<QPointF>{{20, 30}, {20, 20}} << true;
}

void NotesEntranceTest::tellsAClickFromADrag()
{
    QFETCH(QList<QPointF>, motions);
    QFETCH(bool, isDrag);
    Desk desk;
    desk.show();
    desk.container().mouseDown({20, 20});
    for (const QPointF &point : motions) {
        desk.container().mouseDragged(point);
    }
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

void NotesEntranceTest::listGrowsFromThePill_data()
{
    QTest::addColumn<Point>("pill");
    QTest::addColumn<int>("notes");
    QTest::addColumn<Rect>("frame");
    const Point usual{1000, 100};
    QTest::newRow("empty") << usual << 0 << Rect{778, 100, 340, 130};
    QTest::newRow("one note") << usual << 1 << Rect{778, 100, 340, 138};
    QTest::newRow("five notes") << usual << 5 << Rect{778, 100, 340, 426};
    QTest::newRow("six notes") << usual << 6 << Rect{778, 100, 340, 480};
    QTest::newRow("clamped at the upper left") << Point{20, 800} << 9 << Rect{8, 388, 340, 480};
}

void NotesEntranceTest::listGrowsFromThePill()
{
    QFETCH(Point, pill);
    QFETCH(int, notes);
    QFETCH(Rect, frame);
    Desk desk;
    desk.defaults.setValue(originKey, pillGeometry::storableOrigin(pill));
    desk.show();
    desk.list(notes);
    QCOMPARE(desk.panel().frame(), frame);
    QVERIFY(desk.panel().lastFrameWasAnimated && !desk.isPill());
    desk.entrance.collapse();
    QCOMPARE(desk.panel().frame(), pillGeometry::pillAt(pill)); // wherever the list had to open
    QVERIFY(!desk.isPill());
    QVERIFY(desk.panel().finishAnimation());
    QVERIFY(desk.isPill());
    QCOMPARE(desk.defaults.value(originKey), pillGeometry::storableOrigin(pill));
}

void NotesEntranceTest::savesOnlyWhatTheUserMoved()
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

void NotesEntranceTest::foldsByTheOutsideRule()
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

void NotesEntranceTest::choosingFoldsFirst()
{
    Desk desk;
    desk.show();
    desk.list(2);
    desk.model().select(1);
    desk.model().select(2); // there is none
    QCOMPARE(desk.chosen, QStringList{u"source"_s});
}

void NotesEntranceTest::hoverAndCursorFollowThePointer()
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

void NotesEntranceTest::comesBackWhenItsScreenGoes()
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

void NotesEntranceTest::playsTheDemonstrationOnce()
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

void NotesEntranceTest::endsTheDemonstrationAtAnyStep_data()
{
    QTest::addColumn<std::chrono::milliseconds>("time");
    QTest::newRow("the finger glides") << 500ms;
    QTest::newRow("it touches") << 1200ms;
    QTest::newRow("the list is open") << 2000ms;
    QTest::newRow("the finger fades") << 3700ms;
}

void NotesEntranceTest::endsTheDemonstrationAtAnyStep()
{
    QFETCH(std::chrono::milliseconds, time);
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

void NotesEntranceTest::describesANote()
{
    Desk desk;
    desk.show();
    ReadingNote asked = noteOf(u" a\r\n\tb"_s + QString(100000, u'x'), u"translated"_s);
    asked.followUps.resize(2);
    desk.entrance.showNotesList({noteOf({}, u"translated"_s, u"explained"_s), asked}, {});
    const NoteListModel &rows = *static_cast<NoteListModel *>(desk.model().rows());
    QCOMPARE(rows.data(rows.index(0), NoteListModel::Detail), u"explained"_s);
    QCOMPARE(rows.data(rows.index(0), NoteListModel::FollowUps), 0);
    QCOMPARE(rows.data(rows.index(1), NoteListModel::Detail), u"translated"_s);
    QCOMPARE(rows.data(rows.index(1), NoteListModel::FollowUps), 2);
    const QString shown = rows.data(rows.index(1), NoteListModel::SourceText).toString();
    QVERIFY(shown.startsWith("a bxx"_L1) && shown.endsWith(u'…') && shown.size() < 300);
}

QTEST_GUILESS_MAIN(NotesEntranceTest)
#include "test_notes_entrance.moc"

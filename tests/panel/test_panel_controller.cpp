// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The rules of the panel on a fake desktop, without window or drawing. The test sets the view's
// fitting height.

#include "panel/PanelGeometry.h"
#include "panel/ResultPanelController.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeFloatingWindows.h"
#include "platform/fake/FakeScreens.h"
#include "ui/BilingualText.h"
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

constexpr Point insidePanel{720, 860};
constexpr Point outsidePanel{10, 10};
const ExplanationResult explained{u"翻译"_s, u"解释"_s};
const Event escape{.type = EventType::KeyDown, .keyCode = KeyCode::Escape};

struct Desk {
    FakeFloatingWindows windows;
    FakeScreens screens;
    FakeEventMonitors monitors;
    BilingualText texts{[] { return u"English"_s; }};
    ResultPanelController panel{windows, screens, monitors, texts};

    FakeFloatingPanel &window() { return *windows.panels.constFirst(); }
    ResultPanelView &view()
    {
        return *window().content.properties.value(u"view"_s).value<ResultPanelView *>();
    }
    void fit(double height)
    {
        panel.prepare();
        view().setFittingHeight(height);
    }
    void presentLoading(std::function<void()> onDismiss = {})
    {
        panel.present(IslandContent::loading(u"word"_s), {}, std::move(onDismiss));
    }
    void presentResult(QList<ThreadItem> thread = {}, std::function<void()> onDismiss = {})
    {
        panel.present(IslandContent::result(explained, u"source"_s, std::move(thread)), {},
                      std::move(onDismiss));
    }
};

Screen screenAt(double x, double y, double width, double height, double menuBar = 0,
                double camera = 0)
{
    return {{x, y, width, height}, {x, y, width, height - menuBar}, camera};
}

} // namespace

class ResultPanelControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void placesItself()
    {
        const Screen left = screenAt(0, 0, 1440, 900, 24);
        const Screen right = screenAt(1440, 300, 1920, 1080, 30, 38);
        const Point lowerLeft{5, 5};
        const struct {
            const char *name;
            QList<Screen> screens;
            Point pointer;
            double fitting;
            Rect frame;
            double inset;
        } rows[] = {
            {"menu bar", {left, right}, lowerLeft, 120, {460, 780, 520, 120}, 24},
            {"camera housing", {left, right}, {1440, 300}, 120, {2140, 1260, 520, 120}, 38},
            {"pointer nowhere", {left, right}, {-50, 5}, 120, {460, 780, 520, 120}, 24},
            {"no screen", {}, lowerLeft, 120, {340, 680, 520, 120}, 0},
            {"visible part above the screen's edge",
             {screenAt(0, 0, 1440, 900, -10)},
             lowerLeft,
             120,
             {460, 780, 520, 120},
             0},
            {"one line", {left}, lowerLeft, 40, {460, 804, 520, 96}, 24},
            {"taller than the screen", {left}, lowerLeft, 5000, {460, 24, 520, 876}, 24},
        };
        for (const auto &row : rows) {
            Desk desk;
            desk.fit(row.fitting);
            desk.screens.list = row.screens;
            desk.screens.pointer = row.pointer;
            desk.presentResult();
            QVERIFY2(desk.window().frame() == row.frame, row.name);
            QVERIFY2(desk.view().topInset() == row.inset, row.name);
            QVERIFY(!desk.window().isKey);
        }
    }

    void watchesExactlyWhileShown()
    {
        Desk desk;
        desk.panel.prepare();
        QCOMPARE(desk.monitors.localMasks(), QList<EventMask>{});
        QVERIFY(!desk.panel.isOnScreen());

        desk.presentResult();
        desk.presentResult();
        QCOMPARE(desk.monitors.localMasks(), QList<EventMask>{0x40040a});
        QCOMPARE(desk.monitors.globalMasks(), (QList<EventMask>{0x0a, 0x400000}));
        QVERIFY(desk.panel.isOnScreen());

        desk.panel.dismiss();
        QCOMPARE(desk.monitors.localMasks() + desk.monitors.globalMasks(), QList<EventMask>{});
        QVERIFY(!desk.window().isVisible());
    }

    void closesByTheOutsideRule()
    {
        const auto closes = [](EventType type, bool isLocal, Point pointer, bool isUnsent = false) {
            Desk desk;
            desk.presentResult();
            desk.view().setHasUnsentText(isUnsent);
            desk.screens.pointer = pointer;
            const Event event{.type = type};
            if (!isLocal)
                desk.monitors.sendGlobal(event);
            const bool isPassedOn = !isLocal || desk.monitors.sendLocal(event);
            return isPassedOn && !desk.panel.isOnScreen();
        };
        for (const auto type :
             {EventType::LeftMouseDown, EventType::RightMouseDown, EventType::ScrollWheel}) {
            for (const bool isLocal : {true, false}) {
                QVERIFY(closes(type, isLocal, outsidePanel));
                QVERIFY(!closes(type, isLocal, insidePanel));
                QVERIFY(!closes(type, isLocal, outsidePanel, true));
            }
        }
        QVERIFY(!closes(EventType::KeyDown, true, outsidePanel));
        // the frame is half open: its upper and right edges are outside
        QVERIFY(!closes(EventType::LeftMouseDown, false, {460, 860}));
        QVERIFY(closes(EventType::LeftMouseDown, false, {980, 860}));
    }

    void escapeClosesAndIsSwallowed()
    {
        Desk desk;
        desk.presentResult();
        desk.view().setHasUnsentText(true);
        QVERIFY(!desk.monitors.sendLocal(escape));
        QVERIFY(!desk.panel.isOnScreen());
    }

    void runsOnDismissOnceAfterThePanelIsGone()
    {
        Desk desk;
        int runs = 0;
        const auto onDismiss = [&] {
            ++runs;
            QVERIFY(!desk.panel.isOnScreen());
            QVERIFY(!desk.window().isVisible());
            QCOMPARE(desk.monitors.localMasks(), QList<EventMask>{});
            desk.panel.dismiss();
        };
        desk.panel.dismiss();
        desk.presentResult({}, onDismiss);
        desk.panel.dismiss();
        desk.panel.dismiss();
        QCOMPARE(runs, 1);
        desk.presentLoading(onDismiss);
        QCOMPARE(runs, 1);
        Q_EMIT desk.window().closeRequested();
        QCOMPARE(runs, 2);
        desk.presentResult({}, onDismiss);
        desk.view().close();
        QCOMPARE(runs, 3);
    }

    void replacesWithoutUnmapping()
    {
        Desk desk;
        bool wasOnScreenInCallback = true;
        desk.fit(130);
        desk.presentLoading([&] { wasOnScreenInCallback = desk.panel.isOnScreen(); });
        desk.view().setFittingHeight(300);
        QSignalSpy fresh(&desk.view(), &ResultPanelView::freshlyPresented);
        desk.view().setHasUnsentText(true);
        desk.presentResult();

        QVERIFY(!wasOnScreenInCallback);
        QCOMPARE(desk.windows.panels.size(), 1);
        QCOMPARE(desk.window().timesShown, 1);
        QCOMPARE(fresh.count(), 1);
        QVERIFY(!desk.view().hasUnsentText());
        QVERIFY(desk.window().lastFrameWasAnimated);
        QCOMPARE(desk.window().frame(), (Rect{460, 600, 520, 300}));
    }

    void survivesPresentingFromOnDismiss()
    {
        Desk desk;
        QStringList order;
        desk.presentResult({}, [&] {
            order << u"old"_s;
            desk.presentLoading([&] { order << u"nested"_s; });
        });
        desk.panel.showError(u"last"_s, ErrorHelp::None, {});
        QCOMPARE(order, (QStringList{u"old"_s, u"nested"_s}));
        QCOMPARE(desk.view().state(), ResultPanelView::State::Error);
        QCOMPARE(desk.monitors.localMasks().size(), 1);
    }

    void followUpsExtendWhatIsOnScreen()
    {
        Desk desk;
        desk.presentResult({ThreadItem{u"q1"_s, u"a1"_s}});
        desk.view().setHasUnsentText(true);
        QSignalSpy fresh(&desk.view(), &ResultPanelView::freshlyPresented);
        QSignalSpy bottom(&desk.view(), &ResultPanelView::scrollToBottomRequested);
        QSignalSpy focus(&desk.view(), &ResultPanelView::focusRequested);
        auto *rows = desk.view().thread();
        const auto cell = [rows](int row, const char *role) {
            return rows->data(rows->index(row, 0), rows->roleNames().key(role));
        };

        desk.panel.showFollowUpThinking(u"q2"_s);
        QCOMPARE(rows->rowCount(), 2);
        QCOMPARE(cell(1, "pending").toBool(), true);
        QVERIFY(desk.view().awaitsAnswer());
        desk.panel.showFollowUpFailure(u"sorry"_s, {});
        QCOMPARE(cell(1, "answer").toString(), u"sorry"_s);
        QCOMPARE(cell(1, "failed").toBool(), true);
        desk.panel.showFollowUpThinking(u"q3"_s);
        desk.panel.showUnkeptFollowUpAnswer(u"a3"_s);
        QCOMPARE(cell(2, "question").toString(), u"q3"_s);
        QCOMPARE(cell(2, "answer").toString(), u"a3"_s);
        QCOMPARE(cell(2, "failed").toBool(), false);
        QCOMPARE(cell(0, "kept").toBool(), true);
        QCOMPARE(cell(1, "kept").toBool(), false);
        QCOMPARE(cell(2, "kept").toBool(), false);
        QCOMPARE(cell(0, "answer").toString(), u"a1"_s);

        desk.panel.showContext({u"web-url:x"_s, u"a place"_s, ReadingContextSource::webURL});
        QCOMPARE(desk.view().contextName(), u"a place"_s);

        QCOMPARE(bottom.count(), 4);
        QCOMPARE(focus.count(), 4);
        QCOMPARE(fresh.count(), 0);
        QVERIFY(desk.view().hasUnsentText()); // a draft outlives a redrawing
    }

    void followUpsNeedAResult()
    {
        Desk desk;
        const auto isIgnored = [&] {
            desk.panel.showFollowUpThinking(u"q"_s);
            desk.panel.showFollowUpAnswer(u"a"_s);
            return desk.view().thread()->rowCount() == 0;
        };
        desk.panel.prepare();
        QVERIFY(isIgnored());
        QVERIFY(!desk.panel.isOnScreen());
        desk.presentResult({ThreadItem{u"q"_s, u"a"_s}});
        desk.presentLoading();
        QVERIFY(isIgnored());
        desk.panel.present(IslandContent::demo(explained), {}, {});
        QVERIFY(isIgnored());
        desk.presentResult();
        desk.panel.showFollowUpAnswer(u"answer without a question"_s);
        QCOMPARE(desk.view().thread()->rowCount(), 0);
    }

    void growsDownwardsOnThePanelsOwnScreen()
    {
        Desk desk;
        desk.screens.list = {screenAt(0, 0, 1440, 900, 24), screenAt(1440, 0, 1000, 400, 0, 38)};
        desk.fit(150);
        desk.presentResult();
        desk.screens.pointer = {1500, 10}; // the pointer has moved on, the panel has not
        desk.view().setFittingHeight(600);
        desk.panel.showFollowUpThinking(u"q"_s);

        QCOMPARE(desk.window().frame(), (Rect{460, 300, 520, 600}));
        QVERIFY(desk.window().lastFrameWasAnimated);
        QCOMPARE(desk.view().topInset(), 24.0);
    }

    void followsItsScreen()
    {
        Desk desk;
        desk.screens.list = {screenAt(0, 0, 1440, 900), screenAt(1440, 0, 1000, 800)};
        desk.fit(150);
        desk.screens.pointer = {1500, 10};
        desk.presentResult();
        QCOMPARE(desk.window().frame(), (Rect{1680, 650, 520, 150}));
        desk.screens.list[1] = screenAt(1440, 0, 1200, 700);
        Q_EMIT desk.screens.changed();
        QCOMPARE(desk.window().frame(), (Rect{1780, 550, 520, 150}));
        desk.screens.list.removeLast(); // unplugged
        desk.screens.pointer = {700, 10};
        Q_EMIT desk.screens.changed();
        QCOMPARE(desk.window().frame(), (Rect{460, 750, 520, 150}));
        QVERIFY(desk.panel.isOnScreen());
    }

    void staysBelowABarOfTheWindowManager()
    {
        Desk desk;
        desk.screens.list = {screenAt(0, 0, 1440, 900, 32), screenAt(1440, 0, 1440, 900, 24)};
        desk.fit(150);
        desk.presentLoading();
        desk.window().letManagerMoveTo({460, 718, 520, 150});
        QCOMPARE(desk.view().topInset(), 0.0);

        desk.presentResult();
        QCOMPARE(desk.window().frame(), (Rect{460, 718, 520, 150}));
        QCOMPARE(desk.view().topInset(), 0.0);

        desk.panel.dismiss();
        desk.screens.pointer = {1500, 10};
        desk.presentResult(); // on the other screen nothing is known yet
        QCOMPARE(desk.window().frame(), (Rect{1900, 750, 520, 150}));
        QCOMPARE(desk.view().topInset(), 24.0);
    }

    void errorsTakeNoQuestionAndMayOfferPermission()
    {
        Desk desk;
        desk.panel.onFollowUp = [](const QString &) { QFAIL("asked"); };
        desk.panel.showError(u"no permission"_s, ErrorHelp::Permission, {});
        QCOMPARE(desk.view().state(), ResultPanelView::State::Error);
        QCOMPARE(desk.view().explanation(), u"no permission"_s);
        QVERIFY(!desk.view().submitFollowUp(u"why?"_s));
        QVERIFY(desk.view().offersPermission());
        desk.panel.showError(u"no key"_s, ErrorHelp::Service, {});
        QVERIFY(!desk.view().offersPermission() && !desk.view().offersService()); // leads nowhere
        connect(&desk.panel, &ResultPanelController::serviceSettingsRequested, this, [] {});
        desk.panel.showError(u"no key"_s, ErrorHelp::Service, {});
        QVERIFY(desk.view().offersService());
        desk.presentResult();
        QVERIFY(!desk.view().offersPermission() && !desk.view().offersService());
    }
};

QTEST_GUILESS_MAIN(ResultPanelControllerTest)
#include "test_panel_controller.moc"

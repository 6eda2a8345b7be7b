// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The panel's real window under a real window manager, beside the window of another application.

#include "driver/Desktop.h"
#include "driver/Waiting.h"
#include "panel/ResultPanelController.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/QtScreens.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

const ExplanationResult explained{u"翻译"_s, u"An explanation of several lines.\n\n\nThe end."_s};

struct Desk {
    QQmlEngine engine;
    BilingualText texts{[] { return u"English"_s; }};
    QtFloatingWindows windows{engine, [] { return false; }};
    QtScreens screens;
    FakeEventMonitors monitors;
    ResultPanelController panel{windows, screens, monitors, texts};
    QWindow *window = nullptr;
    Desktop desktop;
    X11Problems problems;
    X11Connection outside{problems}; ///< another client of the server
    int timesUnmapped = 0;

    Desk()
    {
        prepareEngine(engine);
        panel.prepare();
        window = QGuiApplication::allWindows().constFirst();
        outside.setEventHandler([this](const xcb_generic_event_t &event) {
            timesUnmapped += eventType(event) == XCB_UNMAP_NOTIFY ? 1 : 0;
        });
    }
    [[nodiscard]] WindowId id() const { return static_cast<WindowId>(window->winId()); }
    [[nodiscard]] QList<quint32> property(const QByteArray &name)
    {
        const auto reply = outside.reply<xcb_get_property_reply_t>(
            xcb_get_property(outside.xcb(), 0, id(), outside.atom(name), XCB_ATOM_ANY, 0, 256));
        if (!reply || reply->format != 32)
            return {};
        const auto *values = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
        return {values, values + reply->value_len};
    }
    [[nodiscard]] bool hasState(const QByteArray &state)
    {
        return property("_NET_WM_STATE").contains(outside.atom(state));
    }
    [[nodiscard]] bool isOnEveryWorkspace()
    {
        return property("_NET_WM_DESKTOP").value(0) == 0xFFFFFFFF
            || hasState("_NET_WM_STATE_STICKY");
    }
    /// Counts how often the panel is unmapped from now on.
    void watch()
    {
        constexpr quint32 mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(outside.xcb(), id(), XCB_CW_EVENT_MASK, &mask);
        outside.roundTrip();
        QCoreApplication::processEvents();
        timesUnmapped = 0;
    }
};

} // namespace

class PanelOnDesktopTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { installApplicationFonts(); }

    void hangsOnEveryWorkspaceInNoListAndStaysMapped()
    {
        Desk desk;
        QRect firstPlace;
        for (int round = 0; round < 2; ++round) {
            desk.panel.present(IslandContent::loading(u"word"_s), {}, {});
            QVERIFY(waitUntil([&] { return desk.isOnEveryWorkspace(); }));
            for (const char *state : {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER",
                                      "_NET_WM_STATE_ABOVE"}) {
                QVERIFY2(waitUntil([&] { return desk.hasState(state); }), state);
            }
            const QRect screen = desk.window->screen()->geometry();
            if (round
                > 0) { // under load, a window manager applies the last size of the first round
                QVERIFY(waitUntil([&] { return desk.desktop.geometry(desk.id()) == firstPlace; }));
            }
            const QRect place = desk.desktop.geometry(desk.id());
            firstPlace = place;
            QCOMPARE(place.y(), screen.y());
            QCOMPARE(place.center().x(), screen.center().x());
            QVERIFY(waitUntil([&] { return desk.desktop.isVisible(desk.id()); }));
            desk.watch();
            desk.panel.present(IslandContent::result(explained, u"word"_s, {}), {}, {});
            QVERIFY(waitUntil([&] { return desk.window->height() > place.height(); }));
            desk.outside.roundTrip();
            QCoreApplication::processEvents();
            QCOMPARE(desk.timesUnmapped, 0);
            QVERIFY(!desk.window->close()); // as the window manager does
            QVERIFY(desk.window->handle() != nullptr);
            QVERIFY(waitUntil([&] { return !desk.desktop.isVisible(desk.id()); }));
        }
    }
};

int main(int argc, char **argv)
{
    QtFloatingWindows::chooseRenderer();
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    PanelOnDesktopTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_panel_on_desktop.moc"

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Two screens on a private desktop, with a desktop panel on one of them.

#include "platform/windowing/QtScreens.h"
#include "platform/windowing/x11/XcbAccess.h"
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <array>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

bool setMonitor(const QString &name, const QString &geometry, const QString &output)
{
    return QProcess::execute(u"xrandr"_s, {u"--setmonitor"_s, name, geometry, output}) == 0;
}

} // namespace

class ScreensTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void panelOfOneScreenLeavesTheOther()
    {
        QVERIFY(setMonitor(u"left"_s, u"640/170x800/210+0+0"_s, u"screen"_s));
        QVERIFY(setMonitor(u"right"_s, u"640/170x800/210+640+0"_s, u"none"_s));
        const auto areTwo = [] {
            const auto list = QGuiApplication::screens();
            return list.size() == 2 && list[0]->size().width() == 640
                && list[1]->size().width() == 640;
        };
        if (!QTest::qWaitFor(areTwo)) {
            QSKIP("this Qt does not see the display server's monitors");
        }
        const QtScreens screens;
        const auto visible = [&screens](double x) {
            for (const Screen &screen : screens.screens()) {
                if (screen.frame.contains({x, 400})) {
                    return screen.visibleFrame;
                }
            }
            return Rect();
        };
        constexpr double left = 60; // points of each, from the main screen's edge
        constexpr double right = 700;
        const Rect leftBefore = visible(left);
        const Rect rightBefore = visible(right);
        QCOMPARE(leftBefore.width + rightBefore.width, 1280.0);

        QWindow bar;
        bar.setFlags(Qt::FramelessWindowHint);
        bar.setGeometry(640, 0, 640, 30);
        bar.create();
        auto *c = x11::connection();
        const std::array<quint32, 12> strut{0, 0, 30, 0, 0, 0, 0, 0, 640, 1279, 0, 0};
        const auto id = static_cast<xcb_window_t>(bar.winId());
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, x11::atom(c, "_NET_WM_STRUT_PARTIAL"),
                            XCB_ATOM_CARDINAL, 32, strut.size(), strut.data());
        const xcb_atom_t dock = x11::atom(c, "_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, x11::atom(c, "_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &dock);
        bar.show();
        Rect rightAfter = rightBefore;
        rightAfter.height -= 30;
        QTRY_COMPARE(visible(right), rightAfter);
        QCOMPARE(visible(left), leftBefore);
        bar.destroy();
        QTRY_COMPARE(visible(right), rightBefore);
        const QSignalSpy changed(&screens, &Screens::changed);
        QTest::qWait(100); // nothing happens any more
        QVERIFY2(changed.size() <= 1, qPrintable(QString::number(changed.size())));
    }
};

QTEST_MAIN(ScreensTest)
#include "test_screens.moc"

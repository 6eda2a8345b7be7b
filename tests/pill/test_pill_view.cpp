// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The pill in its real window on a platform without a display.

#include "pill/NotesEntranceController.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeScreens.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "support/QuickItems.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include <QGuiApplication>
#include <QPointingDevice>
#include <QQmlEngine>
#include <QScreen>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

struct Desk {
    QQmlEngine engine;
    QString language;
    BilingualText texts{[this] { return language; }};
    QtFloatingWindows windows{engine, [] { return true; }};
    FakeScreens screens;
    FakeEventMonitors monitors;
    FakeDefaultsStore defaults;
    FakeClock clock;
    NotesEntranceController entrance{{windows, screens, monitors, defaults, clock, texts}};
    QQuickWindow *window = nullptr;
    int opened = 0;

    explicit Desk(int count, QString chosen = u"English"_s) : language(std::move(chosen))
    {
        prepareEngine(engine);
        entrance.show(count, [this] { ++opened; });
        window = qobject_cast<QQuickWindow *>(QGuiApplication::allWindows().constFirst());
    }
    [[nodiscard]] const QQuickItem *item(const QString &name) const
    {
        static_cast<void>(window->grabWindow()); // lays out what has changed
        return test::findItem(window->contentItem(), name);
    }
};

} // namespace

class PillViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { installApplicationFonts(); }

    void followsAFinger()
    {
        const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
        Desk desk(2);
        const auto finger = [&] { return QTest::touchEvent(desk.window, screen.get()); };
        const QPoint start = QPoint(40, 40);
        const QPoint before = desk.window->position();
        const auto moveBy = [&](QPoint way) {
            finger().move(0, before + start + way - desk.window->position());
        };
        auto isDragged = [&, steps = 0]() mutable { // a motion takes effect with the next frame
            moveBy({-60, -30 - (++steps % 2)});
            return desk.window->position() != before;
        };
        finger().press(0, start);
        QTRY_VERIFY(isDragged());
        moveBy({-60, -30});
        QVERIFY(!desk.defaults.value(u"notesPillOrigin"_s).isValid());
        finger().release(0, start); // the window has followed
        QCOMPARE(desk.window->position(), before - QPoint(60, 30));
        QVERIFY(desk.defaults.value(u"notesPillOrigin"_s).isValid());
        QCOMPARE(desk.opened, 0);
        for (const auto &place : {start, start + QPoint(60, -20)}) {
            finger().press(0, place);
            finger().release(0, place);
        }
        QVERIFY(desk.opened > 0); // two taps in a row may count as one
    }

    void largeTextStaysWhole_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<qreal>("points");
        for (const auto &language : {u"English"_s, u"Chinese"_s}) {
            for (const qreal points : {10.0, 15.0, 20.0}) // from the usual size to twice that
                QTest::addRow("%s, %g points", qPrintable(language), points) << language << points;
        }
    }

    void largeTextStaysWhole()
    {
        QFETCH(QString, language);
        QFETCH(qreal, points);
        const test::LargeText large(points);
        Desk desk(12345, language);
        const QQuickItem *count = desk.item(u"count"_s);
        QVERIFY(count && count->property("text").toString().endsWith("12345"_L1));
        QVERIFY(!count->property("truncated").toBool());
        QVERIFY(count->property("contentHeight").toReal() <= 44);

        desk.entrance.showNotesList({}, {});
        const auto isWhole = [&] {
            const QQuickItem *nothing = desk.item(u"nothing"_s);
            return nothing && nothing->property("contentHeight").toReal() <= nothing->height()
                && nothing->property("contentWidth").toReal() <= nothing->width();
        };
        QTRY_VERIFY(isWhole());
        const QQuickItem *nothing = desk.item(u"nothing"_s);
        QVERIFY(nothing->mapToScene({0, nothing->height()}).y() <= desk.window->height());
    }
};

int main(int argc, char **argv)
{
    QtFloatingWindows::chooseRenderer();
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    PillViewTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_pill_view.moc"

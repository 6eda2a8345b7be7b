// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ProgramTest.h"
#include "driver/Desktop.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <functional>

using namespace vellumo::test;

namespace {

/// A screen saver or login manager that reports whether the screen is locked.
class Locker : public QDBusVirtualObject {
public:
    bool isLocked = false;
    int questions = 0;

    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        ++questions;
        const bool isProperty = message.member() == "Get"_L1;
        connection.send(message.createReply(isProperty ? QVariant::fromValue(QDBusVariant(isLocked))
                                                       : QVariant(isLocked)));
        return true;
    }
};

} // namespace

/// What counts as a double tap, on the keyboard of a desktop with the built program.
class TestProgramTrigger : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void takesTwoPressesForADoubleTap()
    {
        const struct {
            const char *name;
            std::function<bool()> keys; // returns whether a panel is expected
        } rows[] = {
            // the distance by the server's time stamps counts, to the millisecond
            {"just within the time", [&] { return desktop_.doubleTap(355ms) <= 360ms; }},
            {"just beyond the time", [&] { return desktop_.doubleTap(366ms) <= 360ms; }},
            {"left, then right",
             [&] {
                 desktop_.doubleTap(150ms, Key::AltLeft, Key::AltRight);
                 return true;
             }},
            {"Shift held",
             [&] {
                 desktop_.press(Key::ShiftLeft);
                 desktop_.doubleTap();
                 desktop_.release(Key::ShiftLeft);
                 return false;
             }},
            {"letters between the presses",
             [&] {
                 desktop_.tap(Key::AltLeft);
                 desktop_.tap(Key::ControlLeft);
                 desktop_.tap(Key::AltLeft);
                 return true;
             }},
        };
        const auto isOver = [this] {
            const QString text = vellumo_->panelText();
            return text.contains("Select text first."_L1) || text.contains("Ask a follow-up"_L1);
        };
        QVERIFY(vellumo_->start() && editor_->open());
        for (const auto &[name, keys] : rows) {
            if (!keys()) {
                QVERIFY2(!vellumo_->waitForPanel(600ms), name);
                // a single press may have moved the focus to the menu bar; a pair counts by now
                desktop_.tap(Key::Escape);
                desktop_.doubleTap();
            }
            QVERIFY2(vellumo_->waitForPanel(), name);
            QVERIFY(waitUntil(isOver)); // an answer that comes later opens the panel again
            QVERIFY(vellumo_->dismissPanel());
        }
    }

    void holdingTheSecondTapGivesThePanelTheKeyboard()
    {
        QVERIFY(vellumo_->start() && editor_->open());
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForAnswer());
        QCOMPARE(desktop_.activeWindow(), editor_->window());
        QVERIFY(vellumo_->dismissPanel());
        desktop_.tap(Key::AltLeft);
        desktop_.press(Key::AltLeft);
        const bool isFocused = waitUntil(
            [this] { return vellumo_->panel() && desktop_.activeWindow() == vellumo_->panel(); });
        desktop_.release(Key::AltLeft);
        QVERIFY(isFocused);
    }

    void servesNothingWhileTheScreenIsLocked_data()
    {
        QTest::addColumn<QString>("service");
        QTest::addColumn<QDBusMessage>("news");
        auto saver = QDBusMessage::createSignal(u"/ScreenSaver"_s, u"org.freedesktop.ScreenSaver"_s,
                                                u"ActiveChanged"_s);
        saver << true;
        QTest::newRow("screen saver") << u"org.freedesktop.ScreenSaver"_s << saver;
        auto login = QDBusMessage::createSignal(u"/org/freedesktop/login1/session/_35"_s,
                                                u"org.freedesktop.DBus.Properties"_s,
                                                u"PropertiesChanged"_s);
        login << u"org.freedesktop.login1.Session"_s << QVariantMap{{u"LockedHint"_s, true}}
              << QStringList();
        QTest::newRow("login manager") << u"org.freedesktop.login1"_s << login;
    }

    void servesNothingWhileTheScreenIsLocked()
    {
        QFETCH(QString, service);
        QFETCH(QDBusMessage, news);
        Locker locker;
        auto bus = QDBusConnection::sessionBus();
        QVERIFY(
            bus.registerVirtualObject(u"/org/freedesktop"_s, &locker, QDBusConnection::SubPath));
        QVERIFY(bus.registerService(service));
        vellumo_->setEnvironment(u"DBUS_SYSTEM_BUS_ADDRESS"_s,
                                 qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
        QVERIFY(vellumo_->start() && editor_->open());
        const auto lock = [&](bool isLocked) {
            locker.isLocked = isLocked;
            const int before = locker.questions;
            return bus.send(news) && waitUntil([&] { return locker.questions > before; });
        };
        QVERIFY(waitUntil([&] { return locker.questions > 0; }));
        QVERIFY(lock(true));
        desktop_.doubleTap();
        QVERIFY(!vellumo_->waitForPanel(600ms));
        QVERIFY(lock(false));
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForPanel());
        bus.unregisterObject(u"/org/freedesktop"_s);
        bus.unregisterService(service);
    }
};

QTEST_MAIN(TestProgramTrigger)
#include "test_program_trigger.moc"

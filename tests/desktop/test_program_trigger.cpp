// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Desktop.h"
#include "support/Editor.h"
#include "support/Program.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QTest>
#include <functional>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A screen saver, or a login manager, that says whether the screen is locked.
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
class TestProgramTrigger : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void takesTwoPressesForADoubleTap_data();
    void takesTwoPressesForADoubleTap();
    void servesNothingWhileTheScreenIsLocked_data();
    void servesNothingWhileTheScreenIsLocked();

private:
    Desktop desktop_;
};

void TestProgramTrigger::takesTwoPressesForADoubleTap_data()
{
    using Keys = std::function<bool(const Desktop &)>; // answers whether a panel is expected
    QTest::addColumn<Keys>("keys");
    // what counts is the distance as the server dates it, to the millisecond
    QTest::newRow("just within the time")
        << Keys([](const Desktop &desktop) { return desktop.doubleTap(355ms) <= 360ms; });
    QTest::newRow("just beyond the time")
        << Keys([](const Desktop &desktop) { return desktop.doubleTap(366ms) <= 360ms; });
    QTest::newRow("left, then right") << Keys([](const Desktop &desktop) {
        desktop.doubleTap(150ms, Key::AltLeft, Key::AltRight);
        return true;
    });
    QTest::newRow("a single press") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::AltLeft);
        return false;
    });
    QTest::newRow("Caps Lock on") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::CapsLock);
        desktop.doubleTap();
        desktop.tap(Key::CapsLock);
        return false;
    });
    QTest::newRow("Num Lock on") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::NumLock);
        desktop.doubleTap();
        desktop.tap(Key::NumLock);
        return true;
    });
    QTest::newRow("Shift held") << Keys([](const Desktop &desktop) {
        desktop.press(Key::ShiftLeft);
        desktop.doubleTap();
        desktop.release(Key::ShiftLeft);
        return false;
    });
    QTest::newRow("Shift released twice while Alt is held") << Keys([](const Desktop &desktop) {
        desktop.press(Key::ShiftLeft);
        desktop.press(Key::AltLeft);
        desktop.release(Key::ShiftLeft);
        desktop.tap(Key::ShiftLeft);
        desktop.release(Key::AltLeft);
        desktop.sync();
        return true;
    });
    QTest::newRow("letters between the presses") << Keys([](const Desktop &desktop) {
        desktop.tap(Key::AltLeft);
        desktop.tap(Key::ControlLeft);
        desktop.tap(Key::AltLeft);
        return true;
    });
}

void TestProgramTrigger::takesTwoPressesForADoubleTap()
{
    using Keys = std::function<bool(const Desktop &)>;
    QFETCH(Keys, keys);
    Program vellumo(desktop_, QStringLiteral(VELLUMO_PROGRAM),
                    QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(vellumo.start());
    Editor editor(desktop_, u"The tide turns."_s);
    QVERIFY(editor.open());
    const bool expected = keys(desktop_);
    if (expected) {
        QVERIFY(vellumo.waitForPanel());
        return;
    }
    QVERIFY(!vellumo.waitForPanel(600ms));
    // and it was not deaf: the time of a pending press is over, so that a pair counts
    desktop_.tap(Key::Escape); // a single press may have moved the focus to the menu bar
    desktop_.doubleTap();
    QVERIFY(vellumo.waitForPanel());
}

void TestProgramTrigger::servesNothingWhileTheScreenIsLocked_data()
{
    QTest::addColumn<QString>("service");
    QTest::addColumn<QDBusMessage>("news");
    auto saver = QDBusMessage::createSignal(u"/ScreenSaver"_s, u"org.freedesktop.ScreenSaver"_s,
                                            u"ActiveChanged"_s);
    saver << true;
    QTest::newRow("screen saver") << u"org.freedesktop.ScreenSaver"_s << saver;
    auto login =
        QDBusMessage::createSignal(u"/org/freedesktop/login1/session/_35"_s,
                                   u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    login << u"org.freedesktop.login1.Session"_s << QVariantMap{{u"LockedHint"_s, true}}
          << QStringList();
    QTest::newRow("login manager") << u"org.freedesktop.login1"_s << login;
}

void TestProgramTrigger::servesNothingWhileTheScreenIsLocked()
{
    QFETCH(QString, service);
    QFETCH(QDBusMessage, news);
    Locker locker;
    auto bus = QDBusConnection::sessionBus();
    QVERIFY(bus.registerVirtualObject(u"/org/freedesktop"_s, &locker, QDBusConnection::SubPath));
    QVERIFY(bus.registerService(service));
    Program vellumo(desktop_, QStringLiteral(VELLUMO_PROGRAM), service);
    vellumo.setEnvironment(u"DBUS_SYSTEM_BUS_ADDRESS"_s,
                           qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
    QVERIFY(vellumo.start());
    Editor editor(desktop_, u"The tide turns."_s);
    QVERIFY(editor.open());
    const auto lock = [&](bool isLocked) {
        locker.isLocked = isLocked;
        const int before = locker.questions;
        return bus.send(news) && waitUntil([&] { return locker.questions > before; });
    };
    QVERIFY(waitUntil([&] { return locker.questions > 0; }));
    QVERIFY(lock(true));
    desktop_.doubleTap();
    QVERIFY(!vellumo.waitForPanel(600ms));
    QVERIFY(lock(false));
    desktop_.doubleTap();
    QVERIFY(vellumo.waitForPanel());
    bus.unregisterObject(u"/org/freedesktop"_s);
    bus.unregisterService(service);
}

QTEST_MAIN(TestProgramTrigger)
#include "test_program_trigger.moc"

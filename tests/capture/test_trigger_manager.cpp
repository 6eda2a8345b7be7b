// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/TriggerManager.h"
#include "platform/fake/FakeEventMonitors.h"

#include <QTest>

using namespace vellumo;

namespace {

constexpr quint32 option = ModifierFlag::Option;

struct Change {
    quint32 flags;
    qint64 at; ///< milliseconds
};

} // namespace

class TestTriggerManager : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        with_ = std::make_unique<Fixture>();
        with_->trigger.onDoubleTapOption = [this] { ++with_->fired; };
        with_->trigger.start();
    }

    void doubleTaps_data()
    {
        QTest::addColumn<QList<Change>>("changes");
        QTest::addColumn<int>("fired");
        const auto row = [](const char *name, const QList<Change> &changes, int fired) {
            QTest::newRow(name) << changes << fired;
        };
        constexpr quint32 shift = ModifierFlag::Shift;
        row("0.30 s apart", {{option, 0}, {0, 50}, {option, 300}}, 1);
        row("exactly 0.36 s apart", {{option, 0}, {0, 50}, {option, 360}}, 1);
        row("0.361 s apart", {{option, 0}, {0, 50}, {option, 361}}, 0);
        row("a late second starts a new pair", {{option, 0}, {option, 400}, {option, 700}}, 1);
        row("three", {{option, 0}, {option, 200}, {option, 400}}, 1);
        row("four", {{option, 0}, {option, 200}, {option, 400}, {option, 600}}, 2);
        row("the clock set back", {{option, 1000}, {option, 10}}, 1);
        row("releases do not count", {{option, 0}, {0, 100}, {0, 200}}, 0);
        row("with Command", {{option | ModifierFlag::Command, 0}, {option, 100}}, 0);
        row("with Caps Lock on",
            {{option | ModifierFlag::CapsLock, 0}, {option | ModifierFlag::CapsLock, 100}}, 0);
        row("AltGr is another key", {{ModifierFlag::AltGr, 0}, {ModifierFlag::AltGr, 100}}, 0);
        row("Shift released while Option is held",
            {{option, 0}, {option | shift, 100}, {option, 200}}, 1);
        row("device-dependent bits are ignored", {{option | 0x20, 0}, {option | 0x40, 100}}, 1);
    }

    void doubleTaps()
    {
        QFETCH(QList<Change>, changes);
        QFETCH(int, fired);
        for (const Change &change : changes) {
            with_->events.sendGlobal(
                {EventType::FlagsChanged, change.flags, KeyCode::Other, change.at});
        }
        QCOMPARE(with_->fired, 0); // never from within the delivery of an event
        QCoreApplication::processEvents();
        QCOMPARE(with_->fired, fired);
    }

    void noticesThatTheSecondPressIsHeld()
    {
        int held = 0;
        with_->trigger.onOptionHeld = [&held] { ++held; };
        const auto send = [this](quint32 flags, qint64 at) {
            with_->events.sendGlobal({EventType::FlagsChanged, flags, KeyCode::Other, at});
            QCoreApplication::processEvents();
        };
        send(option, 0); // a desktop that reports whole taps
        send(0, 0);
        QVERIFY(!with_->trigger.knowsHolding());
        send(option, 1000);
        send(0, 1040);
        QVERIFY(with_->trigger.knowsHolding());
        send(option, 1200);
        send(option | ModifierFlag::Shift, 1210);
        QTest::qWait(int(TriggerManager::holdTime.count()) + 50);
        QCOMPARE(held, 0);
        send(0, 2000);
        send(option, 3000);
        send(0, 3040);
        send(option, 3200);
        QVERIFY(QTest::qWaitFor([&] { return held == 1; }));
        QCOMPARE(with_->fired, 2);
    }

    void tapsOnOurOwnWindowsCountAndPassOn()
    {
        tap(0);
        QVERIFY(with_->events.sendLocal({EventType::FlagsChanged, option, KeyCode::Other, 200}));
        QCoreApplication::processEvents();
        QCOMPARE(with_->fired, 1);
    }

    void startingTwiceFiresOnce()
    {
        with_->trigger.start();
        QCOMPARE(with_->events.globalMasks(), QList<EventMask>{4096});
        QCOMPARE(with_->events.localMasks(), QList<EventMask>{4096});
        tap(0);
        tap(100);
        QCoreApplication::processEvents();
        QCOMPARE(with_->fired, 1);
    }

    void stoppingForgetsThePendingTap()
    {
        tap(0);
        QCoreApplication::processEvents();
        with_->trigger.stop();
        QVERIFY(with_->events.globalMasks().isEmpty() && with_->events.localMasks().isEmpty());
        with_->events.canInstall = false;
        with_->trigger.start(); // without monitors, which is no fault
        with_->trigger.stop();
        with_->events.canInstall = true;
        with_->trigger.start();
        tap(100);
        QCoreApplication::processEvents();
        QCOMPARE(with_->fired, 0);
    }

private:
    void tap(qint64 at)
    {
        with_->events.sendGlobal({EventType::FlagsChanged, option, KeyCode::Other, at});
    }

    struct Fixture {
        FakeEventMonitors events;
        TriggerManager trigger{events};
        int fired = 0;
    };
    std::unique_ptr<Fixture> with_;
};

QTEST_GUILESS_MAIN(TestTriggerManager)
#include "test_trigger_manager.moc"

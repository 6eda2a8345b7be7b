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
    void doubleTaps_data();
    void doubleTaps();
    void tapsOnOurOwnWindowsCountAndPassOn();
    void startingTwiceFiresOnce();
    void stoppingForgetsThePendingTap();
    void worksWithoutMonitors();
};

void TestTriggerManager::doubleTaps_data()
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
    row("Shift released while Option is held", {{option, 0}, {option | shift, 100}, {option, 200}},
        1);
    row("device-dependent bits are ignored", {{option | 0x20, 0}, {option | 0x40, 100}}, 1);
}

void TestTriggerManager::doubleTaps()
{
    QFETCH(QList<Change>, changes);
    QFETCH(int, fired);
    FakeEventMonitors events;
    TriggerManager trigger(events);
    int count = 0;
    trigger.onDoubleTapOption = [&count] { ++count; };
    trigger.start();
    for (const Change &change : changes) {
        events.sendGlobal({EventType::FlagsChanged, change.flags, KeyCode::Other, change.at});
    }
    QCOMPARE(count, 0); // never from within the delivery of an event
    QCoreApplication::processEvents();
    QCOMPARE(count, fired);
}

void TestTriggerManager::tapsOnOurOwnWindowsCountAndPassOn()
{
    FakeEventMonitors events;
    TriggerManager trigger(events);
    int count = 0;
    trigger.onDoubleTapOption = [&count] { ++count; };
    trigger.start();
    events.sendGlobal({EventType::FlagsChanged, option, KeyCode::Other, 0});
    QVERIFY(events.sendLocal({EventType::FlagsChanged, option, KeyCode::Other, 200}));
    QCoreApplication::processEvents();
    QCOMPARE(count, 1);
}

void TestTriggerManager::startingTwiceFiresOnce()
{
    FakeEventMonitors events;
    TriggerManager trigger(events);
    int count = 0;
    trigger.onDoubleTapOption = [&count] { ++count; };
    trigger.start();
    trigger.start();
    QCOMPARE(events.globalMasks(), QList<EventMask>{4096});
    QCOMPARE(events.localMasks(), QList<EventMask>{4096});
    events.sendGlobal({EventType::FlagsChanged, option, KeyCode::Other, 0});
    events.sendGlobal({EventType::FlagsChanged, option, KeyCode::Other, 100});
    QCoreApplication::processEvents();
    QCOMPARE(count, 1);
}

void TestTriggerManager::stoppingForgetsThePendingTap()
{
    FakeEventMonitors events;
    TriggerManager trigger(events);
    int count = 0;
    trigger.onDoubleTapOption = [&count] { ++count; };
    trigger.start();
    events.sendGlobal({EventType::FlagsChanged, option, KeyCode::Other, 0});
    QCoreApplication::processEvents();
    trigger.stop();
    QVERIFY(events.globalMasks().isEmpty() && events.localMasks().isEmpty());
    trigger.start();
    events.sendGlobal({EventType::FlagsChanged, option, KeyCode::Other, 100});
    QCoreApplication::processEvents();
    QCOMPARE(count, 0);
}

void TestTriggerManager::worksWithoutMonitors()
{
    FakeEventMonitors events;
    events.canInstall = false;
    TriggerManager trigger(events);
    trigger.start();
    trigger.stop();
}

QTEST_GUILESS_MAIN(TestTriggerManager)
#include "test_trigger_manager.moc"

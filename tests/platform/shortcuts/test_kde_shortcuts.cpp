// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Global shortcuts of KDE, with another connection of this process as KWin on the bus.

#include "driver/Waiting.h"
#include "platform/shortcuts/DesktopReach.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using State = DesktopChange::State;

namespace {

constexpr int metaCtrlE = 0x14000045;
constexpr int metaAltE = 0x18000045;
constexpr int alt = 0x08000000;

} // namespace

class Version : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.KWin")

public:
    QString number;

public Q_SLOTS:
    Q_SCRIPTABLE QString supportInformation() const
    {
        return u"KWin Support Information:\n\nVersion\n=======\nKWin version: %1\nQt Version: 6.8.2\n"_s
            .arg(number);
    }
};

/// Answers like KWin. Keys stay when KWin is started again, as in the user's settings.
class Registry : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.KGlobalAccel")

public:
    QMap<QString, QList<int>> stored; ///< keys by name of the action
    QStringList grabbed;
    QList<int> ofOthers;

public Q_SLOTS:
    Q_SCRIPTABLE QList<int> shortcut(const QStringList &id) const { return stored.value(id[1]); }
    Q_SCRIPTABLE bool isGlobalShortcutAvailable(int key, const QString &component) const
    {
        return component == u"app.vellumo.Vellumo" && !ofOthers.contains(key);
    }
    Q_SCRIPTABLE void doRegister(const QStringList &id) { registered_ = id; }
    Q_SCRIPTABLE QList<int> setShortcut(const QStringList &id, const QList<int> &keys, uint flags)
    {
        if (id != registered_ || (flags & 2U) == 0) {
            return {};
        }
        if ((flags & 4U) != 0) {
            stored[id[1]] = keys;
        }
        grabbed.append(id[1]);
        return stored.value(id[1]);
    }
    Q_SCRIPTABLE void setInactive(const QStringList &id) { grabbed.removeAll(id[1]); }
    Q_SCRIPTABLE bool unregister(const QString & /*component*/, const QString &action)
    {
        grabbed.removeAll(action);
        return stored.remove(action) > 0;
    }

private:
    QStringList registered_;
};

class TestKdeShortcuts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(
            kwin_.registerObject(u"/KWin"_s, &version_, QDBusConnection::ExportScriptableSlots));
    }

    void init()
    {
        registry_ = std::make_unique<Registry>();
        QVERIFY(kwin_.registerObject(u"/kglobalaccel"_s, registry_.get(),
                                     QDBusConnection::ExportScriptableSlots));
        version_.number = u"6.3.6"_s;
    }

    void cleanup()
    {
        for (const QString &name : {u"org.kde.KWin"_s, u"org.kde.kglobalaccel"_s})
            kwin_.unregisterService(name);
    }

    void dependsOnTheVersion_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<State>("alone");
        QTest::addColumn<State>("withKey");
        QTest::newRow("5.27") << u"5.27.5"_s << State::Unavailable << State::Possible;
        QTest::newRow("6.0") << u"6.0.90"_s << State::Unavailable << State::Possible;
        QTest::newRow("6.1") << u"6.1.0"_s << State::Possible << State::Possible;
        QTest::newRow("6.10") << u"6.10.1"_s << State::Possible << State::Possible;
        QTest::newRow("unknown") << u"?"_s << State::Unavailable << State::Unavailable;
    }

    void dependsOnTheVersion()
    {
        QFETCH(QString, version);
        version_.number = version;
        start();
        DesktopReach reach(QDBusConnection::sessionBus(), {});
        const auto states = [&] {
            const QList<DesktopChange *> changes = reach.changes(); // the last of each kind
            return QList{changes[1]->state(), changes.constLast()->state()};
        };
        QFETCH(State, alone);
        QFETCH(State, withKey);
        QVERIFY(waitUntil([&] { return states() == QList{alone, withKey}; }));
    }

    void replacesTheEntryOfAnEarlierVersion()
    {
        const QString settings = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/kwinrc"_s;
        const auto hasEntry = [&] {
            QFile file(settings);
            return file.open(QIODevice::ReadOnly) && file.readAll().contains("Alt=");
        };
        version_.number = u"5.27.5"_s;
        start();
        std::optional<DesktopReach> reach(std::in_place, QDBusConnection::sessionBus(), QString());
        QVERIFY(waitUntil([&] { return reach->tapSetting().state() == State::Possible; }));
        reach->tapSetting().make();
        QVERIFY(waitUntil([&] { return reach->tapSetting().state() == State::Made; }));
        QVERIFY(hasEntry());
        cleanup(); // the desktop is upgraded
        version_.number = u"6.3.6"_s;
        start();
        reach.emplace(QDBusConnection::sessionBus(), QString());
        reach->replaceOutdated();
        QVERIFY(waitUntil([&] { return registry_->stored.value(u"tap"_s) == QList{alt}; }));
        QVERIFY(waitUntil([&] { return !hasEntry(); }));
        QCOMPARE(reach->tapSetting().state(), State::Made);
    }

    void holdsItsKeysWhileItRuns()
    {
        registry_->ofOthers = {metaCtrlE};
        std::optional<DesktopReach> reach(std::in_place, QDBusConnection::sessionBus(), QString());
        start(); // after vellumo
        QVERIFY(waitUntil([&] { return reach->tapSetting().state() == State::Possible; }));
        QVERIFY(waitUntil([&] { return reach->shortcut().state() == State::Possible; }));
        const QSignalSpy tapped(&reach->taps(), &TapSource::tapped);
        const QSignalSpy explained(&*reach, &DesktopReach::explainRequested);
        for (DesktopChange *change : {&reach->tapSetting(), &reach->shortcut()}) {
            const QSignalSpy finished(change, &DesktopChange::finished);
            change->make();
            QVERIFY(waitUntil([&] { return finished.size() == 1; }));
            QVERIFY(finished.at(0).at(0).toBool());
        }
        QCOMPARE(registry_->stored.value(u"tap"_s), QList{alt});
        QCOMPARE(registry_->stored.value(u"explain"_s), QList{metaAltE});
        QCOMPARE(reach->shortcut().keys(), u"Meta+Alt+E"_s);

        auto stranger = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"stranger"_s);
        press(stranger, u"app.vellumo.Vellumo"_s, u"tap"_s);
        press(kwin_, u"other"_s, u"tap"_s);
        press(kwin_, u"app.vellumo.Vellumo"_s, u"explain"_s);
        press(kwin_, u"app.vellumo.Vellumo"_s, u"tap"_s);
        QVERIFY(waitUntil([&] { return tapped.size() == 1; }));
        QCOMPARE(explained.size(), 1);

        reach.reset();
        QVERIFY(waitUntil([&] { return registry_->grabbed.isEmpty(); }));
        reach.emplace(QDBusConnection::sessionBus(), QString()); // the next run
        QVERIFY(waitUntil([&] { return registry_->grabbed.size() == 2; }));
        cleanup();
        QVERIFY(waitUntil([&] { return reach->tapSetting().state() == State::Unavailable; }));
        registry_->grabbed.clear(); // KWin has crashed
        start();
        QVERIFY(waitUntil([&] { return registry_->grabbed.size() == 2; }));
        QCOMPARE(reach->tapSetting().state(), State::Made);

        const QSignalSpy undone(&reach->shortcut(), &DesktopChange::finished);
        reach->shortcut().undo();
        QVERIFY(waitUntil([&] { return undone.size() == 1; }));
        QCOMPARE(registry_->stored.keys(), QStringList{u"tap"_s});
        registry_->stored.clear(); // by the user, in the desktop's settings
        registry_->ofOthers = {alt};
        reach->tapSetting().refresh();
        QVERIFY(waitUntil([&] { return reach->tapSetting().state() == State::Taken; }));
        QDBusConnection::disconnectFromBus(u"stranger"_s);
    }

private:
    void start()
    {
        for (const QString &name : {u"org.kde.KWin"_s, u"org.kde.kglobalaccel"_s})
            kwin_.registerService(name);
    }

    static void press(const QDBusConnection &from, const QString &component, const QString &action)
    {
        auto signal = QDBusMessage::createSignal(u"/component/app_vellumo_Vellumo"_s,
                                                 u"org.kde.kglobalaccel.Component"_s,
                                                 u"globalShortcutPressed"_s);
        from.send(signal << component << action << qlonglong(0));
    }

    QDBusConnection kwin_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"kwin"_s);
    Version version_;
    std::unique_ptr<Registry> registry_;
};

QTEST_GUILESS_MAIN(TestKdeShortcuts)
#include "test_kde_shortcuts.moc"

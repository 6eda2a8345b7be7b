// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The script in KWin. Another connection of this process plays KWin on the bus.

#include "platform/dbus/SessionBus.h"
#include "platform/wayland/KWinWindows.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

/// Runs scripts as KWin 5 does: their objects lie at the root.
class KWin : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kwin.Scripting")

public:
    explicit KWin(const QString &name)
        : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name))
    {
        connection.registerObject(u"/Scripting"_s, this, QDBusConnection::ExportScriptableSlots);
        connection.registerService(u"org.kde.KWin"_s);
    }

    ~KWin() override { QDBusConnection::disconnectFromBus(connection.name()); }
    Q_DISABLE_COPY_MOVE(KWin)

public Q_SLOTS:
    Q_SCRIPTABLE int loadScript(const QString &path, const QString &name)
    {
        file = path;
        loaded.append(name);
        connection.registerObject(u"/3"_s, u"org.kde.kwin.Script"_s, this,
                                  QDBusConnection::ExportNonScriptableSlots);
        return 3;
    }
    Q_SCRIPTABLE bool unloadScript(const QString &name) { return loaded.removeOne(name); }
    void run()
    {
        QFile script(file);
        hasRun = script.open(QIODevice::ReadOnly) && script.readAll().contains("callDBus");
    }

public:
    QDBusConnection connection;
    QString file;
    QStringList loaded;
    bool hasRun = false;
};

namespace {

/// Reports a window as the script does. Returns the type of the answer.
QDBusMessage::MessageType report(const QDBusConnection &from, const QStringList &texts)
{
    auto message = QDBusMessage::createMethodCall(QDBusConnection::sessionBus().baseService(),
                                                  u"/app/vellumo/KWinWindows"_s,
                                                  u"app.vellumo.KWinWindows"_s, u"report"_s);
    for (const QString &text : texts) {
        message << text;
    }
    QDBusPendingCallWatcher watcher(from.asyncCall(message, 2000));
    (void)QTest::qWaitFor([&] { return watcher.isFinished(); });
    return watcher.reply().type();
}

} // namespace

class TestKWinWindows : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsItsScriptInKWinOnly()
    {
        SessionBus bus;
        std::optional<KWinWindows> windows(std::in_place, bus,
                                           [](qint64 process) { return process == getpid(); });
        std::optional<KWin> kwin(u"first"_s);
        bus.open();
        QTRY_VERIFY(kwin->hasRun);
        const QString file = kwin->file;
        QVERIFY(!windows->frontWindow());

        QCOMPARE(report(kwin->connection,
                        {u"{1}"_s, u"41"_s, u"org.kde.konsole"_s, u"konsole"_s, u"sh <2>\u200e"_s}),
                 QDBusMessage::ReplyMessage);
        const auto first = windows->frontWindow();
        QVERIFY(first && first->isActive);
        QCOMPARE(first->applicationId, u"org.kde.konsole"_s);
        QCOMPARE(windows->windowTitle(41), u"sh"_s);

        auto foreign = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"foreign"_s);
        const QStringList forged{u"{2}"_s, u"42"_s, {}, u"x"_s, u"x"_s};
        QCOMPARE(report(foreign, forged), QDBusMessage::ErrorMessage);
        QCOMPARE(report(kwin->connection, {u"{2}"_s}), QDBusMessage::ErrorMessage);
        QCOMPARE(report(kwin->connection, {u"{1}"_s, u"41"_s, {}, {}, u"ls"_s}),
                 QDBusMessage::ReplyMessage);
        QCOMPARE(windows->frontWindow()->processIdentifier, 41);
        QVERIFY(windows->frontWindow()->since == first->since);
        QCOMPARE(windows->windowTitle(41), u"ls"_s);
        (void)report(kwin->connection, {u"{3}"_s, u"not a number"_s, {}, {}, {}});
        QVERIFY(!windows->frontWindow()->isActive);
        QVERIFY(!windows->windowTitle(41));
        (void)report(kwin->connection, {u"{4}"_s, QString::number(getpid()), {}, {}, u"own"_s});
        QVERIFY(windows->frontWindow()->isActive && windows->frontWindow()->isBehindOwn);
        QVERIFY(windows->frontWindow()->since == first->since);
        QCOMPARE(windows->windowTitle(41), u"ls"_s);

        kwin.reset();
        QTRY_VERIFY(!windows->frontWindow());
        kwin.emplace(u"second"_s);
        QTRY_VERIFY(kwin->hasRun);
        QCOMPARE(report(kwin->connection, forged), QDBusMessage::ReplyMessage);
        QCOMPARE(windows->frontWindow()->processIdentifier, 42);

        QCOMPARE(kwin->loaded.size(), 1);
        windows.reset();
        QTRY_VERIFY(kwin->loaded.isEmpty());
        QVERIFY(!QFile::exists(file));
        QDBusConnection::disconnectFromBus(u"foreign"_s);
    }
};

QTEST_GUILESS_MAIN(TestKWinWindows)
#include "test_kwin_windows.moc"

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The companion in GNOME Shell. Another connection of this process takes the shell's place on the
// bus.

#include "platform/dbus/SessionBus.h"
#include "platform/wayland/ShellWindows.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

class Shell : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.vellumo.Companion")

public:
    Shell() : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"shell"_s))
    {
        connection.registerService(u"org.gnome.Shell"_s);
    }
    ~Shell() override { QDBusConnection::disconnectFromBus(connection.name()); }
    Q_DISABLE_COPY_MOVE(Shell)

    void enable()
    {
        connection.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
        send(connection, u"Available"_s);
    }
    void disable()
    {
        send(connection, u"Ended"_s);
        connection.unregisterObject(path);
    }
    /// Sends a signal to vellumo, from the shell or from another connection.
    static void send(const QDBusConnection &from, const QString &signal,
                     const QVariantList &arguments = {})
    {
        auto message = QDBusMessage::createTargetedSignal(
            QDBusConnection::sessionBus().baseService(), path, u"app.vellumo.Companion"_s, signal);
        message.setArguments(arguments);
        from.send(message);
    }

public Q_SLOTS:
    Q_SCRIPTABLE void Follow() { ++follows; }
    Q_SCRIPTABLE void Unfollow() { ++unfollows; }

public:
    QDBusConnection connection;
    int follows = 0;
    int unfollows = 0;

private:
    inline static const QString path = u"/app/vellumo/Companion"_s;
};

namespace {

QVariantList window(quint64 id, int process, const QString &application, const QString &title)
{
    return {id, process, application, u"class"_s, title};
}

qlonglong microseconds(TapSource::Time at)
{
    return std::chrono::duration_cast<std::chrono::microseconds>(at.time_since_epoch()).count();
}

} // namespace

class TestShellCompanion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTheShellOnly()
    {
        SessionBus bus;
        ShellCompanion companion(bus, [](qint64 process) { return process == getpid(); });
        ShellWindows windows(companion);
        const QSignalSpy tapped(&companion.taps(), &TapSource::tapped);
        std::optional<Shell> shell(std::in_place);
        auto stranger = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"stranger"_s);
        bus.open();
        companion.setFollowing(true);
        shell->send(shell->connection, u"Window"_s, window(1, 41, {}, {})); // without the extension
        QTRY_VERIFY(bus.hasOpened());
        QTRY_VERIFY([&] {
            shell->enable(); // until the shell is known
            return companion.isLive();
        }());

        shell->send(shell->connection, u"Window"_s,
                    window(1, 41, u"org.gnome.TextEditor.desktop"_s, u"one"_s));
        QTRY_VERIFY(windows.frontWindow());
        const auto first = windows.frontWindow();
        QCOMPARE(first->processIdentifier, 41);
        QCOMPARE(first->applicationId, u"org.gnome.TextEditor"_s);
        QVERIFY(first->isOfCompositor);
        shell->send(stranger, u"Window"_s, window(2, 42, {}, u"forged"_s));
        shell->send(stranger, u"Tapped"_s, {qlonglong{1}});
        shell->send(stranger, u"Ended"_s);
        const auto now = std::chrono::steady_clock::now();
        shell->send(shell->connection, u"Tapped"_s, {microseconds(now)});
        shell->send(shell->connection, u"Tapped"_s, {qlonglong{1}}); // not of this clock
        shell->send(shell->connection, u"Window"_s, window(1, 41, {}, u"two"_s));
        QTRY_COMPARE(windows.windowTitle(41), u"two"_s);
        QVERIFY(windows.frontWindow()->since == first->since);
        QCOMPARE(tapped.size(), 2);
        QCOMPARE(microseconds(tapped.at(0).at(0).value<TapSource::Time>()), microseconds(now));
        QVERIFY(now - tapped.at(1).at(0).value<TapSource::Time>() < std::chrono::seconds(1));
        shell->send(shell->connection, u"Window"_s, window(0, 0, {}, {}));
        QTRY_VERIFY(!windows.frontWindow()->isActive);

        shell->disable();
        QTRY_VERIFY(!companion.isLive());
        QVERIFY(!windows.frontWindow());
        shell->enable();
        QTRY_VERIFY(companion.isLive());
        companion.setFollowing(false);
        QTRY_COMPARE(shell->unfollows, 1);
        shell->enable();
        shell->send(shell->connection, u"Tapped"_s, {microseconds(now)});
        const int follows = shell->follows;
        companion.setFollowing(true);
        QTRY_VERIFY(shell->follows > follows); // the extension may also have announced itself late
        QTRY_VERIFY(companion.isLive());
        QCOMPARE(tapped.size(), 2);

        shell.reset();
        QTRY_VERIFY(!companion.isLive());
        QDBusConnection::disconnectFromBus(u"stranger"_s);
    }
};

QTEST_GUILESS_MAIN(TestShellCompanion)
#include "test_shell_companion.moc"

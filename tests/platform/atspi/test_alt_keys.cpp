// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The listener for Alt. Keys are reported through the accessibility registry, as applications do.

#include "platform/atspi/AltKeys.h"
#include "platform/atspi/AtspiBus.h"
#include "platform/dbus/SessionBus.h"
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;
using namespace vellumo;

struct DeviceEvent {
    quint32 type = 0; ///< 0: pressed, 1: released
    qint32 symbol = 0;
    qint32 modifiers = 0;
};
Q_DECLARE_METATYPE(DeviceEvent)

QDBusArgument &operator<<(QDBusArgument &argument, const DeviceEvent &event)
{
    argument.beginStructure();
    argument << event.type << event.symbol << qint32{64} << event.modifiers << qint32{0}
             << QString() << false;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, DeviceEvent & /*event*/)
{
    return argument;
}

namespace {

constexpr qint32 altLeft = 0xffe9;
constexpr qint32 letterA = 'a';
constexpr qint64 maxAnswerMs = 100; // an application waits for half a second

/// Reports a key to the registry, as applications do before they handle it, in another thread, and
/// blocks this one until the answer. Returns how long it took.
qint64 reportKey(const QString &address, const DeviceEvent &event)
{
    qint64 elapsed = -1;
    QThread *application = QThread::create([&] {
        auto bus = QDBusConnection::connectToBus(address, u"application"_s);
        auto call = QDBusMessage::createMethodCall(
            u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry/deviceeventcontroller"_s,
            u"org.a11y.atspi.DeviceEventController"_s, u"NotifyListenersSync"_s);
        call.setArguments({QVariant::fromValue(event)});
        QElapsedTimer timer;
        timer.start();
        const auto answer = bus.call(call, QDBus::Block, 5000);
        elapsed = answer.type() == QDBusMessage::ReplyMessage ? timer.elapsed() : -1;
        QDBusConnection::disconnectFromBus(u"application"_s);
    });
    application->start();
    application->wait();
    delete application;
    return elapsed;
}

/// Returns the number of connections to the bus, beside the one that asks.
qsizetype connectionsTo(const QString &address)
{
    qsizetype count = -1;
    {
        const auto bus = QDBusConnection::connectToBus(address, u"counter"_s);
        const auto call =
            QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                           u"org.freedesktop.DBus"_s, u"ListNames"_s);
        const QStringList names = bus.call(call).arguments().value(0).toStringList();
        count = names.filter(QRegularExpression(u"^:"_s)).size() - 1;
    }
    QDBusConnection::disconnectFromBus(u"counter"_s);
    return count;
}

} // namespace

class TestAltKeys : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answersWhileTheMainThreadIsBlocked()
    {
        qDBusRegisterMetaType<DeviceEvent>();
        SessionBus session;
        AtspiBus bus(session);
        AltKeys keys(bus);
        const QSignalSpy pressed(&keys, &TapSource::pressed);
        const QSignalSpy released(&keys, &TapSource::released);
        session.open();
        bus.setWanted(true);
        QTRY_VERIFY(bus.isOpen());
        // until it is registered
        QTRY_VERIFY(reportKey(bus.address(), {0, altLeft, 0}) >= 0
                    && QTest::qWaitFor([&] { return !pressed.isEmpty(); }, 50));
        QVERIFY(!keys.waitForRelease(QDeadlineTimer(10)));
        for (int i = 0; i < 5; ++i) {
            const qint64 elapsed = reportKey(bus.address(), {1, altLeft, 8});
            QVERIFY2(elapsed >= 0 && elapsed < maxAnswerMs, qPrintable(QString::number(elapsed)));
            QVERIFY(keys.waitForRelease(QDeadlineTimer(500)));
            QVERIFY(reportKey(bus.address(), {0, altLeft, 0}) < maxAnswerMs);
        }
        QTRY_COMPARE(released.size(), 5);
        QTest::qWait(50); // the last press
        const auto before = pressed.size();
        QVERIFY(reportKey(bus.address(), {0, letterA, 0}) >= 0);
        QVERIFY(reportKey(bus.address(), {0, altLeft, 4}) >= 0); // with Control
        QTest::qWait(50);
        QCOMPARE(pressed.size(), before);

        const QString address = bus.address();
        const auto connections = connectionsTo(address);
        bus.setWanted(false);
        QTRY_COMPARE(connectionsTo(address), connections - 2); // the bus itself and the listener
    }
};

QTEST_GUILESS_MAIN(TestAltKeys)
#include "test_alt_keys.moc"

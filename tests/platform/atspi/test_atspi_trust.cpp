// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "AtspiFixture.h"
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QJsonArray>
#include <QSignalSpy>
#include <QTest>
#include <csignal>

using namespace vellumo;
using namespace vellumo::test;

namespace {

QDBusMessage status(const char *method, QVariantList arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QString::fromLatin1(method));
    arguments.prepend(QStringLiteral("org.a11y.Status"));
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call);
}

bool isOn(const QString &name = QStringLiteral("IsEnabled"))
{
    const QVariantList reply = status("Get", {name}).arguments();
    return reply.value(0).value<QDBusVariant>().variant().toBool();
}

void turn(bool on)
{
    status("Set", {QStringLiteral("IsEnabled"), QVariant::fromValue(QDBusVariant(on))});
}

} // namespace

class TestAtspiTrust : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { turn(false); }

    void firstUseAsks()
    {
        for (const bool wasOn : {false, true}) {
            turn(wasOn);
            const Reader reader(false);
            QSignalSpy changes(reader.accessibility.get(), &Accessibility::trustChanged);
            const QSignalSpy connections(reader.accessibility.get(),
                                         &Accessibility::connectionChanged);
            QVERIFY(!reader.accessibility->isProcessTrustedWithPrompt());
            QCOMPARE(reader.prompt.timesAsked, 1);
            reader.accessibility->refreshTrust();
            reader.prompt.answer(true);
            QVERIFY(waitUntil([&] { return reader.accessibility->isProcessTrusted(); }));
            QVERIFY(!changes.isEmpty());
            QVERIFY(isOn());
            QVERIFY(!isOn(QStringLiteral("ScreenReaderEnabled")));
            QVERIFY(reader.defaults.value(QStringLiteral("accessibilityConsent")).toBool());
            QCOMPARE(reader.accessibility->isConnecting(), !reader.accessibility->isConnected());
            QVERIFY(reader.connect());
            QVERIFY(!connections.isEmpty() && !reader.accessibility->isConnecting());
        }
    }

    void laterStartIsSilent()
    {
        const Reader reader(true);
        QVERIFY(!reader.accessibility->isProcessTrusted());
        QVERIFY(!isOn());
        reader.accessibility
            ->isProcessTrustedWithPrompt(); // a quick desktop is on when this returns
        QVERIFY(waitUntil([&] { return reader.accessibility->isProcessTrusted(); }));
        QCOMPARE(reader.prompt.timesAsked, 0);
        const Reader next(true); // finds the switch on
        QVERIFY(next.accessibility->isProcessTrusted());
        QVERIFY(next.accessibility->isProcessTrustedWithPrompt());
    }

    void revocationIsNotFought()
    {
        turn(true);
        const Reader reader(true);
        QVERIFY(reader.connect());
        QSignalSpy changes(reader.accessibility.get(), &Accessibility::trustChanged);
        turn(false);
        QVERIFY(waitUntil([&] { return !changes.isEmpty(); }));
        QVERIFY(!reader.accessibility->isProcessTrusted());
        QVERIFY(!reader.accessibility->isProcessTrustedWithPrompt());
        QCOMPARE(reader.prompt.timesAsked, 1);
        QVERIFY(!isOn());
        QVERIFY(!reader.accessibility->isConnected());
        turn(true);
        QVERIFY(waitUntil([&] { return reader.accessibility->isProcessTrusted(); }));
        QVERIFY(reader.connect());
        turn(false);
        QVERIFY(waitUntil([&] { return !reader.accessibility->isProcessTrusted(); }));
        reader.accessibility->isProcessTrustedWithPrompt();
        reader.prompt.answer(false); // leaves it off, now and at the next start
        QVERIFY(!isOn());
        Reader next(true);
        next.defaults.setValue(QStringLiteral("accessibilityLeftOff"),
                               reader.defaults.value(QStringLiteral("accessibilityLeftOff")));
        QVERIFY(!next.accessibility->isProcessTrustedWithPrompt());
        QVERIFY(waitUntil([&] { return next.prompt.timesAsked == 1; }));
        QVERIFY(!isOn());
        turn(true); // but the consent stays
        for (const Reader *each : {&reader, static_cast<const Reader *>(&next)}) {
            QVERIFY(waitUntil([&] { return each->accessibility->isProcessTrusted(); }));
            QVERIFY(!each->defaults.value(QStringLiteral("accessibilityLeftOff")).isValid());
        }
    }

    void withdrawalEndsReading()
    {
        turn(true);
        const Reader reader(true);
        QVERIFY(reader.connect());
        QCOMPARE(reader.accessibility->focusedWindowTitle(1), QStringLiteral("Peer"));
        reader.accessibility->withdrawConsent();
        QVERIFY(!reader.accessibility->isProcessTrusted());
        QVERIFY(!reader.accessibility->isConnected());
        QVERIFY(!reader.accessibility->focusedWindowTitle(1));
        QVERIFY(isOn());
    }

    void busRestartIsSurvived()
    {
        turn(true);
        const QJsonObject tree{{QStringLiteral("role"), 79},
                               {QStringLiteral("focused"), true},
                               {QStringLiteral("text"), QStringLiteral("again")},
                               {QStringLiteral("selections"), QJsonArray{QJsonArray{0, 5}}}};
        const Reader reader(true);
        QVERIFY(reader.connect());
        const uint launcher = QDBusConnection::sessionBus()
                                  .interface()
                                  ->servicePid(QStringLiteral("org.a11y.Bus"))
                                  .value();
        QVERIFY(launcher > 1);
        kill(static_cast<pid_t>(launcher), SIGTERM);
        QVERIFY(waitUntil([&] { return !reader.accessibility->isConnected(); }));
        QVERIFY(waitUntil(
            [&] {
                return reader.accessibility->isProcessTrusted()
                    && reader.accessibility->isConnected();
            },
            std::chrono::seconds(15)));
        QCOMPARE(reader.prompt.timesAsked, 0);
        Peer peer(tree);
        QVERIFY(peer.waitUntilReady());
        QVERIFY(waitUntil([&] {
            const auto element =
                reader.accessibility->focusedElement(peer.id(), QDeadlineTimer(500));
            return element
                && reader.accessibility->selectedText(*element, QDeadlineTimer(500)).text
                == u"again";
        }));
    }

    void slowServiceIsAskedAgain()
    {
        turn(true);
        const auto launcher = static_cast<pid_t>(QDBusConnection::sessionBus()
                                                     .interface()
                                                     ->servicePid(QStringLiteral("org.a11y.Bus"))
                                                     .value());
        QVERIFY(launcher > 1);
        kill(launcher, SIGSTOP);
        const Reader reader(true);
        // longer than a question waits for its answer
        const QDeadlineTimer slow(std::chrono::milliseconds(3500));
        const bool isSlow = waitUntil([&] { return slow.hasExpired(); });
        kill(launcher, SIGCONT);
        QVERIFY(isSlow && !reader.accessibility->isProcessTrusted());
        QVERIFY(waitUntil([&] { return reader.accessibility->isProcessTrusted(); }));
    }
};

QTEST_GUILESS_MAIN(TestAtspiTrust)
#include "test_atspi_trust.moc"

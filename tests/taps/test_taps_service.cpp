// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The program vellumo-taps, with a login manager of the test and pipes as keyboards.

#include "taps/LoginManager.h"
#include "taps/RunningTaps.h"

#include <QTest>
#include <csignal>
#include <linux/input.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

const QByteArray leftAlt = "1";
const QByteArray bothAlts = "3";

using Session = LoginManager::Session;

} // namespace

class TestTapsService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        std::signal(SIGPIPE, SIG_IGN);
        ownSession_.user = ::getuid();
    }

    void init()
    {
        logins_ = std::make_unique<LoginManager>();
        logins_->setSession(ownSession_);
        taps_ = std::make_unique<RunningTaps>();
        taps_->listen();
        keyboard_ = std::make_unique<PipedKeyboard>(taps_->keyboardPath(u"event0"_s));
        QVERIFY(taps_->start());
    }

    void cleanup()
    {
        keyboard_ = nullptr;
        taps_ = nullptr;
        logins_ = nullptr;
    }

    void reportsALoneAlt()
    {
        TapsClient left(taps_->socketPath(), leftAlt);
        TapsClient both(taps_->socketPath(), bothAlts);
        QTRY_COMPARE(left.heard(), "l");
        QTRY_COMPARE(both.heard(), "l");
        QVERIFY(keyboard_->isRead());
        keyboard_->tapAlt();
        keyboard_->send(KEY_RIGHTALT, 1);
        keyboard_->send(KEY_RIGHTALT, 0);
        keyboard_->send(KEY_LEFTALT, 1);
        keyboard_->send(KEY_F, 1);
        keyboard_->send(KEY_F, 0);
        keyboard_->send(KEY_LEFTALT, 0);
        QTRY_COMPARE(both.heard(), "ldududx");
        QTRY_COMPARE(left.heard(), "ldudx");
    }

    void readsOnlyForTheUserOfTheSession_data()
    {
        QTest::addColumn<Session>("session");
        Session session = ownSession_;
        session.user = ownSession_.user + 1;
        QTest::newRow("another user") << session;
        session = ownSession_;
        session.isLocked = true;
        QTest::newRow("locked") << session;
        session = ownSession_;
        session.isActive = false;
        QTest::newRow("in the background") << session;
        session = ownSession_;
        session.kind = u"greeter"_s;
        QTest::newRow("login screen") << session;
        session = ownSession_;
        session.isPresent = false;
        QTest::newRow("none") << session;
    }
    void readsOnlyForTheUserOfTheSession()
    {
        QFETCH(const Session, session);
        TapsClient client(taps_->socketPath(), leftAlt);
        QTRY_COMPARE(client.heard(), "l");
        QVERIFY(keyboard_->isRead());
        keyboard_->send(KEY_LEFTALT, 1);
        QTRY_COMPARE(client.heard(), "ld");

        logins_->setSession(session);
        QTRY_COMPARE(client.heard(), "ldn");
        QTRY_VERIFY(!keyboard_->isRead());
        TapsClient late(taps_->socketPath(), leftAlt);

        logins_->setSession(ownSession_);
        QTRY_COMPARE(client.heard(), "ldnl");
        QTRY_COMPARE(late.heard(), "l"); // and nothing before
        QTRY_VERIFY(keyboard_->isRead());
        keyboard_->tapAlt();
        QTRY_COMPARE(client.heard(), "ldnldu");
    }

    void refusesAnotherUserBeside()
    {
        if (::getuid() != 0) {
            QSKIP("only root can connect as another user");
        }
        constexpr uid_t nobody = 65534;
        QVERIFY(taps_->openToEveryUser());
        QCOMPARE(::seteuid(nobody), 0);
        TapsClient other(taps_->socketPath(), leftAlt);
        QCOMPARE(::seteuid(0), 0);
        TapsClient own(taps_->socketPath(), leftAlt);
        QTRY_COMPARE(own.heard(), "l");
        QVERIFY(keyboard_->isRead());
        keyboard_->tapAlt();
        QTRY_COMPARE(own.heard(), "ldu");
        QCOMPARE(other.heard(), "");
    }

    void readsNothingForNoRequest_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("heard");
        QTest::newRow("none") << QByteArray() << QByteArray();
        QTest::newRow("no key") << QByteArray("0") << QByteArray();
        QTest::newRow("other keys") << QByteArray("4") << QByteArray(".");
        QTest::newRow("long") << QByteArray("11") << QByteArray(".");
    }
    void readsNothingForNoRequest()
    {
        QFETCH(const QByteArray, request);
        QFETCH(const QByteArray, heard);
        {
            TapsClient first(taps_->socketPath(), leftAlt); // so that the session is known
            QTRY_COMPARE(first.heard(), "l");
        }
        TapsClient client(taps_->socketPath(), request);
        QTRY_VERIFY(!keyboard_->isRead()); // the first one has gone
        QTRY_COMPARE(client.heard(), heard);
    }

    void followsKeyboards()
    {
        keyboard_->unplug();
        TapsClient client(taps_->socketPath(), leftAlt);
        const QString file = taps_->keyboardPath(u"event1"_s);
        QVERIFY(QFile(file).open(QIODevice::WriteOnly)); // no keyboard
        PipedKeyboard mouse(taps_->keyboardPath(u"mouse0"_s));
        PipedKeyboard first(taps_->keyboardPath(u"event2"_s));
        QTRY_COMPARE(client.heard(), "l");
        PipedKeyboard second(taps_->keyboardPath(u"event3"_s));
        QTRY_VERIFY(first.isRead());
        QTRY_VERIFY(second.isRead());
        QVERIFY(!mouse.isRead());
        first.send(KEY_LEFTALT, 1);
        QTRY_COMPARE(client.heard(), "ld");
        first.unplug();
        QTRY_COMPARE(client.heard(), "ldx");
        second.tapAlt();
        QTRY_COMPARE(client.heard(), "ldxdu");
        second.unplug();
        QTRY_COMPARE(client.heard(), "ldxdun");
        PipedKeyboard third(taps_->keyboardPath(u"event3"_s));
        QTRY_COMPARE(client.heard(), "ldxdunl");
    }

    void endsAPressWhenEventsAreLost()
    {
        TapsClient client(taps_->socketPath(), leftAlt);
        QTRY_COMPARE(client.heard(), "l");
        QVERIFY(keyboard_->isRead());
        keyboard_->send(KEY_LEFTALT, 1);
        keyboard_->sendEvent(EV_SYN, SYN_DROPPED, 0);
        keyboard_->send(KEY_LEFTALT, 1); // part of what is incomplete
        keyboard_->tapAlt();
        QTRY_COMPARE(client.heard(), "ldxdu");
    }

    void dropsAClientThatDoesNotRead()
    {
        TapsClient stuck(taps_->socketPath(), leftAlt);
        TapsClient reader(taps_->socketPath(), leftAlt);
        QTRY_COMPARE(reader.heard(), "l");
        QVERIFY(keyboard_->isRead());
        constexpr int taps = 50;
        for (int i = 0; i < taps; ++i) {
            keyboard_->tapAlt();
            QTRY_COMPARE_WITH_TIMEOUT(reader.heard().size(), 1 + 2 * (i + 1), 5000);
        }
        const QByteArray heard = stuck.heard();
        QVERIFY(heard.endsWith('.'));
        QVERIFY2(heard.size() < 40, qPrintable(QString::number(heard.size())));
    }

    void isSilentWithoutALoginManager()
    {
        TapsClient client(taps_->socketPath(), leftAlt);
        QTRY_COMPARE(client.heard(), "l");
        logins_ = nullptr; // a login manager that does not answer
        QTRY_COMPARE(client.heard(), "ln");
        QTRY_VERIFY(!keyboard_->isRead());
    }

private:
    Session ownSession_;
    std::unique_ptr<LoginManager> logins_;
    std::unique_ptr<RunningTaps> taps_;
    std::unique_ptr<PipedKeyboard> keyboard_;
};

QTEST_GUILESS_MAIN(TestTapsService)
#include "test_taps_service.moc"

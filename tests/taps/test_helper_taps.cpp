// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The source of taps in vellumo, with the program vellumo-taps.

#include "platform/wayland/HelperTaps.h"
#include "taps/LoginManager.h"
#include "taps/RunningTaps.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <csignal>
#include <linux/input-event-codes.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

namespace {

/// What a source has reported: p for a press, r for a release.
class Reports {
public:
    explicit Reports(TapSource &source)
    {
        QObject::connect(&source, &TapSource::pressed, &context_, [this](TapSource::Time at) {
            letters += 'p';
            presses.append(at);
        });
        QObject::connect(&source, &TapSource::released, &context_,
                         [this](TapSource::Time) { letters += 'r'; });
    }

    QByteArray letters;
    QList<TapSource::Time> presses;

private:
    QObject context_;
};

} // namespace

class TestHelperTaps : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        std::signal(SIGPIPE, SIG_IGN);
        session_.user = ::getuid();
    }

    void init()
    {
        logins_ = std::make_unique<LoginManager>();
        logins_->setSession(session_);
        service_ = std::make_unique<RunningTaps>();
        keyboard_ = std::make_unique<PipedKeyboard>(service_->keyboardPath(u"event0"_s));
        taps_ = std::make_unique<HelperTaps>(service_->socketPath(),
                                             [] { return tapProtocol::AltKey::Left; });
    }

    void cleanup()
    {
        taps_ = nullptr;
        keyboard_ = nullptr;
        service_ = nullptr;
        logins_ = nullptr;
    }

    void connectsWheneverThereIsAService()
    {
        QSignalSpy changes(taps_.get(), &TapSource::reachChanged);
        taps_->setListening(true);
        QVERIFY(!taps_->hearsEveryWindow());
        service_->listen(); // noticed in the folder of the socket
        QVERIFY(service_->start());
        QTRY_VERIFY(taps_->hearsEveryWindow());
        QCOMPARE(changes.count(), 1);

        service_->kill();
        QTRY_VERIFY(!taps_->hearsEveryWindow());
        QVERIFY(service_->start()); // the socket listened meanwhile
        QTRY_VERIFY(taps_->hearsEveryWindow());

        auto locked = session_;
        locked.isLocked = true;
        logins_->setSession(locked);
        QTRY_VERIFY(!taps_->hearsEveryWindow());
        logins_->setSession(session_);
        QTRY_VERIFY(taps_->hearsEveryWindow());

        taps_->setListening(false);
        QVERIFY(!taps_->hearsEveryWindow());
        QTRY_VERIFY(!keyboard_->isRead());
    }

    void reportsTaps()
    {
        start();
        const Reports reports(*taps_);
        const auto chord = [this] {
            keyboard_->send(KEY_LEFTALT, 1);
            keyboard_->send(KEY_TAB, 1);
            keyboard_->send(KEY_TAB, 0);
            keyboard_->send(KEY_LEFTALT, 0);
        };
        chord();
        chord();
        keyboard_->send(KEY_LEFTALT, 1); // may become another combination
        QTRY_VERIFY(!taps_->waitForRelease(QDeadlineTimer(0)));
        QCOMPARE(reports.letters, "");
        keyboard_->send(KEY_LEFTALT, 0);
        QTRY_COMPARE(reports.letters, "pr");
        keyboard_->send(KEY_LEFTALT, 1); // the press after a tap counts at once
        QTRY_COMPARE(reports.letters, "prp");
        keyboard_->send(KEY_TAB, 1);
        QTRY_COMPARE(reports.letters, "prpr");
    }

    void knowsTheTimesOfWhatItReadsLate()
    {
        start();
        const Reports reports(*taps_);
        const auto before = std::chrono::steady_clock::now();
        keyboard_->tapAlt();
        std::this_thread::sleep_for(400ms); // the main thread is busy
        keyboard_->tapAlt();
        QTRY_COMPARE(reports.letters, "prpr");
        QVERIFY(reports.presses[0] - before < 200ms);
        QVERIFY(reports.presses[1] - reports.presses[0] > 300ms);
    }

    void waitsForTheRelease()
    {
        start();
        const Reports reports(*taps_);
        QVERIFY(taps_->waitForRelease(QDeadlineTimer(1000)));
        keyboard_->send(KEY_LEFTALT, 1);
        QTRY_VERIFY(!taps_->waitForRelease(QDeadlineTimer(0)));
        QElapsedTimer waited;
        waited.start();
        QVERIFY(!taps_->waitForRelease(QDeadlineTimer(50)));
        QVERIFY(waited.elapsed() >= 50);
        std::jthread release([this] {
            std::this_thread::sleep_for(30ms);
            keyboard_->send(KEY_LEFTALT, 0);
        });
        QVERIFY(taps_->waitForRelease(QDeadlineTimer(5000)));
        QCOMPARE(reports.letters, ""); // from the event loop
        QTRY_COMPARE(reports.letters, "pr");
    }

    void endsAPressWithTheService()
    {
        start();
        const Reports reports(*taps_);
        keyboard_->tapAlt();
        keyboard_->send(KEY_LEFTALT, 1);
        QTRY_COMPARE(reports.letters, "prp");
        service_->kill();
        QTRY_COMPARE(reports.letters, "prpr");
        QVERIFY(taps_->waitForRelease(QDeadlineTimer(1000)));
    }

private:
    void start()
    {
        service_->listen();
        QVERIFY(service_->start());
        taps_->setListening(true);
        QTRY_VERIFY(taps_->hearsEveryWindow());
        QVERIFY(keyboard_->isRead());
    }

    LoginManager::Session session_;
    std::unique_ptr<LoginManager> logins_;
    std::unique_ptr<RunningTaps> service_;
    std::unique_ptr<PipedKeyboard> keyboard_;
    std::unique_ptr<HelperTaps> taps_;
};

QTEST_GUILESS_MAIN(TestHelperTaps)
#include "test_helper_taps.moc"

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/Backend.h"
#include "desktop/ProgramTest.h"
#include "driver/Keyring.h"
#include <QTemporaryDir>
#include <csignal>

using namespace vellumo::test;

/// The built program with a session of an earlier run, and the desktop's real keyring.
class TestAccount : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void restoresTheSession_data()
    {
        QTest::addColumn<bool>("isHung"); // at the start
        QTest::newRow("locked") << false;
        QTest::newRow("hung") << true;
    }

    void restoresTheSession()
    {
        QFETCH(bool, isHung);
        const QTemporaryDir folder;
        Backend backend(folder.filePath(u"backend"_s));
        HttpServer proxy;
        proxy.answer("POST", "/v1/chat", {.status = "500 No"});
        const QString uid = backend.tables().uidOf(u"a@b.org"_s);
        const QString refreshToken = backend.tables().newRefreshToken(uid);
        keepSession(refreshToken, uid, u"a@b.org"_s);
        QVERIFY(editor_->open());
        if (isHung)
            Keyring::signal(SIGSTOP);
        else
            QVERIFY(Keyring::lock());
        for (const auto &[name, value] : backend.environment())
            vellumo_->setEnvironment(name, value);
        vellumo_->setEnvironment(u"VELLUMO_PROXY_URL"_s, proxy.url({}).toString());
        const bool hasStarted = vellumo_->start();

        // asks again until the expected request comes
        const auto asksWith = [&](bool token) {
            const auto before = proxy.requests().size();
            desktop_.chord(Key::ControlLeft, Key::A);
            desktop_.doubleTap();
            const bool came = waitUntil([&] { return proxy.requests().size() > before; }, 8s);
            return vellumo_->dismissPanel() && came
                && proxy.requests().constLast().header("X-Firebase-Token").isEmpty() != token;
        };
        const bool isWithout = waitUntil([&] { return asksWith(false); });
        Keyring::signal(SIGCONT);
        QVERIFY(isHung || Keyring::unlock());
        QVERIFY(hasStarted && isWithout);
        QVERIFY(waitUntil([&] { return asksWith(true); }, 40s));
        const QByteArray token = proxy.requests().constLast().header("X-Firebase-Token").value(0);
        QCOMPARE(backend.tables().uidOfIdToken(QString::fromUtf8(token)), uid);
        const QByteArray kept = Keyring::lookUp(u"refreshToken"_s);
        QCOMPARE(backend.tables().uidOfRefreshToken(QString::fromUtf8(kept)), uid);
        QCOMPARE(backend.complaints(), QStringList());

        // secrets are only in the keyring
        const QByteArray everything = vellumo_->allThatIsKept();
        for (const QByteArray &secret : {token, kept, refreshToken.toUtf8()})
            QVERIFY(!secret.isEmpty() && !everything.contains(secret));
        QVERIFY(vellumo_->process().end() == 0);
    }
};

QTEST_MAIN(TestAccount)
#include "test_account.moc"

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/Backend.h"
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/Keyring.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>

using namespace vellumo::test;
using namespace Qt::StringLiterals;

/// The built program of someone who has signed in before, with the desktop's real keyring.
class TestAccount : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void restoresTheSession_data();
    void restoresTheSession();
};

void TestAccount::restoresTheSession_data()
{
    QTest::addColumn<QString>("keyring"); // at the start
    for (const QString &keyring : {u"open"_s, u"locked"_s, u"hung"_s})
        QTest::addRow("%s", qPrintable(keyring)) << keyring;
}

void TestAccount::restoresTheSession()
{
    QFETCH(QString, keyring);
    const QTemporaryDir folder;
    Backend backend(folder.filePath(u"backend"_s));
    HttpServer proxy;
    proxy.answer("POST", "/v1/chat", {.status = "500 No"});
    const QString uid = backend.tables().uidOf(u"a@b.org"_s);
    const QString refreshToken = backend.tables().newRefreshToken(uid);
    Keyring::store(u"refreshToken"_s, refreshToken.toUtf8());
    Keyring::store(u"uid"_s, uid.toUtf8());
    Keyring::store(u"email"_s, "a@b.org");

    QFile text(folder.filePath(u"text"_s));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("tide") == 4);
    text.close();
    Desktop desktop;
    Application editor(qtTextEdit(text.fileName()));
    const auto window = editor.start(desktop);
    QVERIFY(window && desktop.activate(*window));

    if (keyring == "locked"_L1)
        QVERIFY(Keyring::lock());
    else if (keyring == "hung"_L1)
        Keyring::signal(SIGSTOP);
    Program vellumo(desktop, QStringLiteral(VELLUMO_PROGRAM), u"account-"_s + keyring);
    for (const auto &[name, value] : backend.environment())
        vellumo.setEnvironment(name, value);
    vellumo.setEnvironment(u"VELLUMO_PROXY_URL"_s, proxy.url({}).toString());
    const bool hasStarted = vellumo.start();

    // asks once more until the request comes as wanted
    const auto asksWith = [&](bool token) {
        const auto before = proxy.requests().size();
        desktop.chord(Key::ControlLeft, Key::A);
        desktop.doubleTap();
        const bool came =
            waitUntil([&] { return proxy.requests().size() > before; }, std::chrono::seconds(8));
        return vellumo.dismissPanel() && came
            && proxy.requests().constLast().header("X-Firebase-Token").isEmpty() != token;
    };
    const bool isWithout = keyring == "open"_L1 || waitUntil([&] { return asksWith(false); });
    if (keyring == "locked"_L1)
        QVERIFY(Keyring::unlock());
    Keyring::signal(SIGCONT);
    QVERIFY(hasStarted && isWithout);
    QVERIFY(waitUntil([&] { return asksWith(true); }, std::chrono::seconds(40)));
    const QByteArray token = proxy.requests().constLast().header("X-Firebase-Token").value(0);
    QCOMPARE(backend.tables().uidOfIdToken(QString::fromUtf8(token)), uid);
    const QByteArray kept = Keyring::lookUp(u"refreshToken"_s);
    QCOMPARE(backend.tables().uidOfRefreshToken(QString::fromUtf8(kept)), uid);
    QCOMPARE(backend.complaints(), QStringList());

    // secrets are in the keyring alone
    QByteArray everything =
        vellumo.process().standardOutput().toUtf8() + vellumo.process().errorOutput().toUtf8();
    QDirIterator files(qEnvironmentVariable("HOME") + u"/account-"_s + keyring, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        everything += file.readAll();
    }
    for (const QByteArray &secret : {token, kept, refreshToken.toUtf8()})
        QVERIFY(!secret.isEmpty() && !everything.contains(secret));
    QVERIFY(vellumo.process().end() == 0);
}

QTEST_MAIN(TestAccount)
#include "test_account.moc"

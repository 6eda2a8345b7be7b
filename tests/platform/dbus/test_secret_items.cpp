// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "driver/Keyring.h"
#include "driver/Waiting.h"
#include "platform/dbus/SecretServiceItems.h"
#include "platform/dbus/SessionBus.h"

#include <QSignalSpy>
#include <QTest>
#include <csignal>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using Kind = SecretAnswer::Kind;

/// The desktop's real keyring, and changes by its user.
class TestSecretItems : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { bus_.open(); }

    void theDesktopsToolsSeeTheSame()
    {
        QCOMPARE(get(u"uid"_s).kind, Kind::Missing);
        items_.set(u"uid"_s, "first");
        items_.set(u"uid"_s, "second");
        QCOMPARE(get(u"uid"_s).value, QByteArray("second"));
        QCOMPARE(Keyring::lookUp(u"uid"_s), QByteArray("second"));
        items_.remove(u"uid"_s);
        items_.remove(u"uid"_s);
        QCOMPARE(get(u"uid"_s).kind, Kind::Missing);
        QCOMPARE(Keyring::lookUp(u"uid"_s), QByteArray());
        Keyring::store(u"uid"_s, "from outside");
        QCOMPARE(get(u"uid"_s).value, QByteArray("from outside"));
    }

    void keepsEveryValue()
    {
        for (const QByteArray &value :
             {QByteArray(), QByteArray("\0\n\xff", 3), QByteArray(200'000, 'x')}) {
            items_.set(u"odd"_s, value);
            const SecretAnswer answer = get(u"odd"_s);
            QCOMPARE(answer.kind, Kind::Found);
            QCOMPARE(answer.value, value);
        }
    }

    void keepsOneItemOfAnAccount()
    {
        items_.set(u"twice"_s, "own");
        QCOMPARE(get(u"twice"_s).value, QByteArray("own"));
        Keyring::store(u"twice"_s, "in another collection", u"session"_s);
        QCOMPARE(Keyring::count(u"twice"_s), 2);
        QCOMPARE(get(u"twice"_s).value, QByteArray("own"));
        items_.set(u"twice"_s, "newer");
        QCOMPARE(get(u"twice"_s).value, QByteArray("newer"));
        QCOMPARE(Keyring::count(u"twice"_s), 1);
    }

    void encryptsWhatItHandsOver()
    {
        SecretServiceSession session(bus_, QStringLiteral(VELLUMO_CIPHER_MODULE));
        std::optional<bool> isOpen;
        session.open([&](bool result) { isOpen = result; });
        QVERIFY(waitUntil([&] { return isOpen.has_value(); }) && *isOpen);
        QVERIFY(session.isEncrypted());
        const auto first = session.seal("a secret");
        const auto second = session.seal("a secret");
        QVERIFY(first && second && first->value != second->value);
        QVERIFY(!first->value.contains("secret"));
        QCOMPARE(session.unseal(*first), QByteArray("a secret"));
        auto damaged = *first;
        damaged.value.chop(1);
        QVERIFY(!session.unseal(damaged));
        // another program reads the value that the keyring has decrypted
        items_.set(u"sealed"_s, "a secret");
        QCOMPARE(get(u"sealed"_s).value, QByteArray("a secret"));
        QCOMPARE(Keyring::lookUp(u"sealed"_s), QByteArray("a secret"));
    }

    void waitsForALockedKeyring()
    {
        items_.set(u"kept"_s, "before");
        items_.set(u"gone"_s, "before");
        QCOMPARE(get(u"gone"_s).value, QByteArray("before"));
        QSignalSpy readable(&items_, &SecretItems::becameReadable);
        QVERIFY(Keyring::lock());
        QCOMPARE(get(u"never there"_s).kind, Kind::Locked);
        items_.set(u"kept"_s, "older");
        items_.set(u"kept"_s, "after");
        items_.remove(u"gone"_s);
        QCOMPARE(get(u"kept"_s).kind, Kind::Locked);
        QCOMPARE(readable.count(), 0);
        QVERIFY(Keyring::unlock());
        QVERIFY(waitUntil([&] { return readable.count() > 0; }));
        QCOMPARE(get(u"kept"_s).value, QByteArray("after"));
        QCOMPARE(get(u"gone"_s).kind, Kind::Missing);
    }

    void noticesAnotherKeyring()
    {
        QVERIFY(Keyring::lock());
        QCOMPARE(get(u"kept"_s).kind, Kind::Locked);
        QSignalSpy readable(&items_, &SecretItems::becameReadable);
        Keyring::signal(SIGKILL);
        QVERIFY(
            waitUntil([&] { return get(u"kept"_s).kind != Kind::Found && readable.count() > 0; }));
    }

private:
    [[nodiscard]] SecretAnswer get(const QString &account)
    {
        std::optional<SecretAnswer> result;
        items_.get(account, this, [&](const SecretAnswer &answer) { result = answer; });
        if (!waitUntil([&] { return result.has_value(); }))
            qWarning("the keyring does not answer");
        return result.value_or(SecretAnswer());
    }

    SessionBus bus_;
    SecretServiceItems items_{bus_, QStringLiteral(VELLUMO_CIPHER_MODULE)};
};

QTEST_GUILESS_MAIN(TestSecretItems)
#include "test_secret_items.moc"

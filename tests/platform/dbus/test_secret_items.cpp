// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/dbus/SecretServiceItems.h"
#include "platform/dbus/SessionBus.h"
#include "support/Application.h"
#include "support/Waiting.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <csignal>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using Kind = SecretAnswer::Kind;

/// The desktop's real keyring, and what people do to it.
class TestSecretItems : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void theDesktopsToolsSeeTheSame();
    void keepsEveryValue();
    void waitsForALockedKeyring();
    void waitsForAHungKeyring();
    void withoutAnyKeyring();

private:
    [[nodiscard]] SecretAnswer get(const QString &account);
    [[nodiscard]] static QByteArray lookUp(const QString &account);
    static void lock();
    static void unlock();

    SessionBus bus_;
    std::unique_ptr<SecretServiceItems> items_;
};

void TestSecretItems::initTestCase()
{
    bus_.open();
}

void TestSecretItems::init()
{
    items_ = std::make_unique<SecretServiceItems>(bus_);
}

SecretAnswer TestSecretItems::get(const QString &account)
{
    std::optional<SecretAnswer> result;
    items_->get(account, this, [&](const SecretAnswer &answer) { result = answer; });
    if (!waitUntil([&] { return result.has_value(); }))
        qWarning("the keyring does not answer");
    return result.value_or(SecretAnswer());
}

QByteArray TestSecretItems::lookUp(const QString &account)
{
    return outputOf(u"secret-tool"_s,
                    {u"lookup"_s, u"service"_s, u"app.vellumo.Vellumo"_s, u"account"_s, account});
}

void TestSecretItems::lock()
{
    outputOf(u"gdbus"_s,
             {u"call"_s, u"--session"_s, u"-d"_s, u"org.freedesktop.secrets"_s, u"-o"_s,
              u"/org/freedesktop/secrets"_s, u"-m"_s, u"org.freedesktop.Secret.Service.Lock"_s,
              u"['/org/freedesktop/secrets/collection/login']"_s});
}

void TestSecretItems::unlock()
{
    // With the password that the desktop was made with, as the keyring's own dialog does it.
    const auto call = [](const QString &interface, const QString &method,
                         const QVariantList &arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"org.freedesktop.secrets"_s, u"/org/freedesktop/secrets"_s, interface, method);
        message.setArguments(arguments);
        return QDBusConnection::sessionBus().call(message);
    };
    const QDBusMessage session = call(u"org.freedesktop.Secret.Service"_s, u"OpenSession"_s,
                                      {u"plain"_s, QVariant::fromValue(QDBusVariant(QString()))});
    QDBusArgument password;
    password.beginStructure();
    password << session.arguments().at(1).value<QDBusObjectPath>() << QByteArray()
             << QByteArray("private desktop") << u"text/plain"_s;
    password.endStructure();
    const QDBusMessage answer =
        call(u"org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"_s,
             u"UnlockWithMasterPassword"_s,
             {QVariant::fromValue(QDBusObjectPath(u"/org/freedesktop/secrets/collection/login"_s)),
              QVariant::fromValue(password)});
    QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
}

void TestSecretItems::theDesktopsToolsSeeTheSame()
{
    QCOMPARE(get(u"uid"_s).kind, Kind::missing);
    items_->set(u"uid"_s, "first");
    items_->set(u"uid"_s, "second");
    items_->set(u"email"_s, "a@b.org");
    QCOMPARE(get(u"uid"_s).value, QByteArray("second"));
    QCOMPARE(lookUp(u"uid"_s), QByteArray("second"));
    const QByteArray all = outputOf(
        u"secret-tool"_s, {u"search"_s, u"--all"_s, u"service"_s, u"app.vellumo.Vellumo"_s});
    QCOMPARE(all.count("secret = "), 2);
    items_->remove(u"uid"_s);
    items_->remove(u"uid"_s);
    QCOMPARE(get(u"uid"_s).kind, Kind::missing);
    QCOMPARE(lookUp(u"uid"_s), QByteArray());
    outputOf(u"secret-tool"_s,
             {u"store"_s, u"--label=x"_s, u"service"_s, u"app.vellumo.Vellumo"_s, u"account"_s,
              u"uid"_s},
             "from outside");
    QCOMPARE(get(u"uid"_s).value, QByteArray("from outside"));
}

void TestSecretItems::keepsEveryValue()
{
    for (const QByteArray &value :
         {QByteArray(), QByteArray("\0\n\xff", 3), QByteArray(200'000, 'x')}) {
        items_->set(u"odd"_s, value);
        const SecretAnswer answer = get(u"odd"_s);
        QCOMPARE(answer.kind, Kind::found);
        QCOMPARE(answer.value, value);
    }
}

void TestSecretItems::waitsForALockedKeyring()
{
    items_->set(u"kept"_s, "before");
    items_->set(u"gone"_s, "before");
    QCOMPARE(get(u"gone"_s).value, QByteArray("before"));
    QSignalSpy readable(items_.get(), &SecretItems::becameReadable);
    lock();
    QCOMPARE(get(u"kept"_s).kind, Kind::locked);
    QCOMPARE(get(u"never there"_s).kind, Kind::locked);
    items_->set(u"kept"_s, "older");
    items_->set(u"kept"_s, "after");
    items_->remove(u"gone"_s);
    QCOMPARE(get(u"kept"_s).kind, Kind::locked);
    QCOMPARE(readable.count(), 0);
    unlock();
    QVERIFY(waitUntil([&] { return readable.count() > 0; }));
    QCOMPARE(get(u"kept"_s).value, QByteArray("after"));
    QCOMPARE(get(u"gone"_s).kind, Kind::missing);
}

void TestSecretItems::waitsForAHungKeyring()
{
    const auto process =
        QDBusConnection::sessionBus().interface()->servicePid(u"org.freedesktop.secrets"_s);
    QVERIFY(process.isValid());
    items_->set(u"kept"_s, "value");
    QCOMPARE(get(u"kept"_s).value, QByteArray("value"));
    QVERIFY(kill(pid_t(process.value()), SIGSTOP) == 0);
    QElapsedTimer time;
    time.start();
    SecretServiceItems fresh(bus_);
    std::optional<SecretAnswer> result;
    fresh.get(u"kept"_s, this, [&](const SecretAnswer &answer) { result = answer; });
    QCoreApplication::processEvents();
    const qint64 blocked = time.elapsed();
    kill(pid_t(process.value()), SIGCONT);
    QCOMPARE_LT(blocked, 400);
    QVERIFY(!result);
    QVERIFY(waitUntil([&] { return result.has_value(); }));
    QCOMPARE(result->value, QByteArray("value"));
}

void TestSecretItems::withoutAnyKeyring()
{
    SessionBus none; // which never opens
    SecretServiceItems early(none);
    bool isAnswered = false;
    early.get(u"uid"_s, this, [&](const SecretAnswer &) { isAnswered = true; });

    const auto process =
        QDBusConnection::sessionBus().interface()->servicePid(u"org.freedesktop.secrets"_s);
    QVERIFY(kill(pid_t(process.value()), SIGKILL) == 0);
    QVERIFY(waitUntil([&] {
        return get(u"uid"_s).kind == Kind::unavailable || get(u"uid"_s).kind == Kind::locked;
    }));
    QVERIFY(!isAnswered);
}

QTEST_GUILESS_MAIN(TestSecretItems)
#include "test_secret_items.moc"

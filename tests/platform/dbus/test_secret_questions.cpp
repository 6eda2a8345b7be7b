// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/dbus/SecretServiceItems.h"
#include "platform/dbus/SecretServiceWire.h"
#include "platform/dbus/SessionBus.h"
#include "support/Waiting.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QSignalSpy>
#include <QTest>

using namespace vellumo;
using namespace vellumo::secretservice;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using Kind = SecretAnswer::Kind;

namespace {

const QDBusObjectPath nowhere(u"/"_s);
const QDBusObjectPath place(u"/x"_s);

/// An open keyring that asks the user before every change, and cannot encrypt a session.
class AskingKeyring : public QDBusVirtualObject {
public:
    bool hasItem = false;
    int asked = 0;
    int withdrawn = 0;

    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        const auto path = [](const auto &value) { return QVariant::fromValue(value); };
        const auto any = [](const QVariant &value) {
            return QVariant::fromValue(QDBusVariant(value));
        };
        const BusSecret secret{place, {}, "value", u"text/plain"_s};
        const QHash<QString, QVariantList> replies{
            {u"OpenSession"_s, {any(u""_s), path(place)}},
            {u"ReadAlias"_s, {path(place)}},
            {u"Get"_s, {any(false)}},
            {u"SearchItems"_s, {path(hasItem ? Paths{place} : Paths()), path(Paths())}},
            {u"GetSecret"_s, {QVariant::fromValue(secret)}},
            {u"CreateItem"_s, {path(nowhere), path(place)}},
            {u"Delete"_s, {path(place)}}};
        asked += message.member() == "Prompt"_L1 ? 1 : 0;
        withdrawn += message.member() == "Dismiss"_L1 ? 1 : 0;
        return bus.send(message.createReply(replies.value(message.member())));
    }
};

} // namespace

class TestSecretQuestions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void asksTheUserOnlyWhenUnlocking();
};

void TestSecretQuestions::asksTheUserOnlyWhenUnlocking()
{
    AskingKeyring keyring;
    QDBusConnection end = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"keyring"_s);
    QVERIFY(end.registerService(serviceName));
    QVERIFY(end.registerVirtualObject(u"/"_s, &keyring, QDBusConnection::SubPath));
    SessionBus bus;
    bus.open();
    SecretServiceItems items(bus, QStringLiteral(VELLUMO_CIPHER_MODULE));
    QSignalSpy readable(&items, &SecretItems::becameReadable);
    const auto get = [&] {
        std::optional<SecretAnswer> result;
        items.get(u"a"_s, this, [&](const SecretAnswer &answer) { result = answer; });
        return waitUntil([&] { return result.has_value(); }) ? *result : SecretAnswer();
    };
    const auto answer = [&](bool isDismissed) {
        QDBusMessage signal = QDBusMessage::createSignal(
            place.path(), QString::fromLatin1(promptInterface), u"Completed"_s);
        signal << isDismissed << QVariant::fromValue(QDBusVariant(u""_s));
        return end.send(signal);
    };

    items.set(u"a"_s, "older");
    items.set(u"a"_s, "value");
    QCOMPARE(get().kind, Kind::missing);
    QCOMPARE(keyring.withdrawn, 1); // or the older value could come last
    QCOMPARE(keyring.asked, 0);
    items.unlock();
    QVERIFY(waitUntil([&] { return keyring.asked == 1; }));
    QVERIFY(answer(true));
    items.set(u"a"_s, "value");
    items.unlock();
    QVERIFY(waitUntil([&] { return keyring.asked == 2; }));
    QCOMPARE(readable.count(), 0);
    keyring.hasItem = true;
    QVERIFY(answer(false));
    QVERIFY(waitUntil([&] { return readable.count() == 1; }));
    QCOMPARE(get().value, "value");
    items.remove(u"a"_s);
    items.unlock();
    QVERIFY(waitUntil([&] { return keyring.asked == 3; }));
}

QTEST_GUILESS_MAIN(TestSecretQuestions)
#include "test_secret_questions.moc"

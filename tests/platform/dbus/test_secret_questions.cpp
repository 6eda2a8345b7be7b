// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "driver/Waiting.h"
#include "platform/dbus/SecretServiceItems.h"
#include "platform/dbus/SecretServiceWire.h"
#include "platform/dbus/SessionBus.h"
#include "platform/dbus/cipher/SecretCipherModule.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QLibrary>
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

struct KeyringState {
    bool hasItem = false;
    QString failing = {}; ///< the method that is answered with an error
    bool isGarbled = false; ///< then it is answered with another type instead
    int asked = 0;
    int withdrawn = 0;
};

/// An open keyring that asks the user before each change and supports no encrypted session.
class AskingKeyring : public QDBusVirtualObject, public KeyringState {
public:
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
        if (message.member() == failing && isGarbled)
            return bus.send(message.createReply(u"no"_s));
        if (message.member() == failing)
            return bus.send(message.createErrorReply(QDBusError::Failed, u"no"_s));
        asked += message.member() == "Prompt"_L1 ? 1 : 0;
        withdrawn += message.member() == "Dismiss"_L1 ? 1 : 0;
        return bus.send(message.createReply(replies.value(message.member())));
    }
};

} // namespace

class TestSecretQuestions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(end_.registerService(serviceName));
        QVERIFY(end_.registerVirtualObject(u"/"_s, &keyring_, QDBusConnection::SubPath));
        bus_.open();
    }
    void init()
    {
        static_cast<KeyringState &>(keyring_) = {};
        items_ = std::make_unique<SecretServiceItems>(bus_, QStringLiteral(VELLUMO_CIPHER_MODULE));
    }

    void asksTheUserOnlyWhenUnlocking()
    {
        QSignalSpy readable(items_.get(), &SecretItems::becameReadable);
        const auto answer = [&](bool isDismissed) {
            QDBusMessage signal = QDBusMessage::createSignal(
                place.path(), QString::fromLatin1(promptInterface), u"Completed"_s);
            signal << isDismissed << QVariant::fromValue(QDBusVariant(u""_s));
            return end_.send(signal);
        };

        items_->set(u"a"_s, "older");
        items_->set(u"a"_s, "value");
        QCOMPARE(get().kind, Kind::Missing);
        QCOMPARE(keyring_.withdrawn, 1); // otherwise the older value could be written last
        QCOMPARE(keyring_.asked, 0);
        items_->unlock();
        QVERIFY(waitUntil([&] { return keyring_.asked == 1; }));
        QVERIFY(answer(true));
        items_->set(u"a"_s, "value");
        items_->unlock();
        QVERIFY(waitUntil([&] { return keyring_.asked == 2; }));
        QCOMPARE(readable.count(), 0);
        keyring_.hasItem = true;
        QVERIFY(answer(false));
        QVERIFY(waitUntil([&] { return readable.count() == 1; }));
        QCOMPARE(get().value, "value");
        items_->remove(u"a"_s);
        items_->unlock();
        QVERIFY(waitUntil([&] { return keyring_.asked == 3; }));
    }

    void goesOnAfterAnError()
    {
        const std::pair<QString, bool> rows[] = {{u"SearchItems"_s, false},
                                                 {u"ReadAlias"_s, false},
                                                 {u"Get"_s, false},
                                                 {u"OpenSession"_s, true},
                                                 {u"GetSecret"_s, true}};
        for (const auto &[method, hasItem] : rows) {
            keyring_.hasItem = hasItem;
            keyring_.failing = method;
            for (const bool isGarbled : {false, true}) {
                keyring_.isGarbled = isGarbled;
                QVERIFY2(get().kind == Kind::Unavailable, qPrintable(method));
            }
            keyring_.failing.clear();
            QVERIFY2(get().kind == (hasItem ? Kind::Found : Kind::Missing), qPrintable(method));
        }
        keyring_.failing = u"CreateItem"_s;
        items_->set(u"a"_s, "value"); // is pending then, and blocks no question
        QCOMPARE(get().kind, Kind::Found);
    }

    void refusesPredictableKeys()
    {
        using namespace secretCipherModule;
        QLibrary library(QStringLiteral(VELLUMO_CIPHER_MODULE));
        const auto find = reinterpret_cast<Find>(library.resolve(function));
        QVERIFY(find);
        QByteArray own(pairSize, '\0');
        QByteArray open(pairSize, '\0');
        QByteArray key(blockSize, '\0');
        const auto bytes = [](QByteArray &array) {
            return reinterpret_cast<unsigned char *>(array.data());
        };
        QCOMPARE(find()->makePair(bytes(own), bytes(open)), 1);
        const auto agrees = [&](QByteArray peer) {
            return find()->agree(bytes(own), bytes(peer), static_cast<size_t>(peer.size()),
                                 bytes(key));
        };
        const QByteArray prime =
            QByteArray::fromHex("FFFFFFFFFFFFFFFFC90FDAA22168C234C4C6628B80DC1CD129024E088A67CC74"
                                "020BBEA63B139B22514A08798E3404DDEF9519B3CD3A431B302B0A6DF25F1437"
                                "4FE1356D6D51C245E485B576625E7EC6F44C42E9A637ED6B0BFF5CB6F406B7ED"
                                "EE386BFB5A899FA5AE9F24117C4B1FE649286651ECE65381FFFFFFFFFFFFFFFF");
        QByteArray belowPrime = prime;
        belowPrime.back() = '\xFE';
        for (const QByteArray &peer : {QByteArray(1, '\0'), QByteArray(1, '\1'), belowPrime, prime})
            QCOMPARE(agrees(peer), 0);
        QCOMPARE(agrees(QByteArray(1, '\2')), 1);
        QCOMPARE(agrees(open), 1);
    }

private:
    SecretAnswer get()
    {
        std::optional<SecretAnswer> result;
        items_->get(u"a"_s, this, [&](const SecretAnswer &answer) { result = answer; });
        return waitUntil([&] { return result.has_value(); }) ? *result : SecretAnswer();
    }

    AskingKeyring keyring_;
    QDBusConnection end_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"keyring"_s);
    SessionBus bus_;
    std::unique_ptr<SecretServiceItems> items_;
};

QTEST_GUILESS_MAIN(TestSecretQuestions)
#include "test_secret_questions.moc"

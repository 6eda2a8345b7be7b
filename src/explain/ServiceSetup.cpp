// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ServiceSetup.h"

#include "explain/MockAIService.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "platform/Diagnostics.h"
#include "platform/WebAddress.h"

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

const QString baseName = u"OPENAI_BASE_URL"_s;
const QString modelName = u"VELLUMO_MODEL"_s;
const QString keyName = u"OPENAI_API_KEY"_s;
const QString proxyName = u"VELLUMO_PROXY_URL"_s;

const QString choiceKey = u"explanationService"_s;
const QString samplesChoice = u"samples"_s;
const QString ownChoice = u"own"_s;
/// Scheme, host and port that the key in the keyring is for; absent for the key of Info.json.
const QString keyOriginKey = u"serviceKeyFor"_s;
const QString noKey = u"none"_s; ///< there, and as the key of servers that need none

const QString keyAccount = u"serviceKey"_s;

/// How long a question waits for a keyring that does not answer.
constexpr auto keyPatience = 5s;

QString originOfBase(const QString &base)
{
    return originOf(QUrl(base.isEmpty() ? OpenAIService::usualBase : base));
}

} // namespace

const QString ServiceSetup::usualModel = u"gpt-5.4-nano-2026-03-17"_s;

ServiceSetup::ServiceSetup(const Collaborators &collaborators, QObject *parent)
    : QObject(parent)
    , with_(collaborators)
{
    connect(&with_.secrets, &SecretItems::becameReadable, this, [this] {
        if (use() == Use::own && isKeyInKeyring() && keyringPlace_ != KeyPlace::keyring) {
            readKey();
        }
    });
}

std::unique_ptr<AIExplaining> ServiceSetup::makeService()
{
    const Use used = use();
    if (used == Use::own && isKeyInKeyring()) {
        printDiagnostic(u"using OpenAI explanation service"_s);
        if (key_.isEmpty()) {
            readKey();
        }
        return std::make_unique<KeyedService>(
            [self = QPointer(this)](QObject *context, const KeyedService::Completion &completion) {
                if (self) {
                    self->whenKeyIsKnown(context, completion);
                }
            });
    }
    if (used == Use::own) {
        if (const KeyedService::Ready service = ownService(); service.isOk()) {
            printDiagnostic(u"using OpenAI explanation service"_s);
            return std::make_unique<OpenAIService>(service.value());
        }
    } else if (used != Use::samples) {
        const auto service = OpenAIService::make(
            [this](const QString &key) { return with_.config.value(key); },
            with_.config.value(modelName).value_or(usualModel), with_.http, with_.clock);
        if (service.isOk()) {
            printDiagnostic(u"using OpenAI explanation service"_s);
            auto client = std::make_unique<OpenAIService>(service.value());
            client->firebaseTokenProvider = tokenProvider;
            return client;
        }
    }
    const bool isChosen = with_.defaults.value(choiceKey).toString() == samplesChoice;
    printDiagnostic(isChosen ? u"using sample answers, as chosen"_s
                             : u"OPENAI_API_KEY not set — using MockAIService"_s);
    return std::make_unique<MockAIService>(with_.clock);
}

ServiceSetup::Use ServiceSetup::use() const
{
    if (isForced()) {
        return Use::environment;
    }
    const QString choice = with_.defaults.value(choiceKey).toString();
    if (choice == ownChoice) {
        return base().isEmpty() && keyPlace() == KeyPlace::none ? Use::samples : Use::own;
    }
    return choice != samplesChoice && hasConfigured() ? Use::configured : Use::samples;
}

bool ServiceSetup::hasConfigured() const
{
    return with_.config.value(proxyName) || with_.config.value(keyName);
}

bool ServiceSetup::isForced() const
{
    const auto isSet = [this](const QString &name) {
        return with_.config.layerOf(name) == AppConfig::Layer::environment;
    };
    return isSet(proxyName) || isSet(keyName);
}

ServiceSetup::KeyPlace ServiceSetup::keyPlace() const
{
    if (isForced()) {
        return KeyPlace::configuration;
    }
    if (isKeyInKeyring()) {
        return keyOrigin() == originOfBase(base()) ? keyringPlace_ : KeyPlace::missing;
    }
    return configuredKey() ? KeyPlace::configuration : KeyPlace::none;
}

QString ServiceSetup::base() const
{
    return with_.config.value(baseName).value_or(QString());
}

QString ServiceSetup::model() const
{
    return with_.config.value(modelName).value_or(QString());
}

QString ServiceSetup::host() const
{
    const Use used = use();
    if (used == Use::samples) {
        return {};
    }
    const auto proxy = with_.config.value(proxyName);
    const QString address = used != Use::own && proxy ? *proxy : base();
    QUrl url(address.isEmpty() ? OpenAIService::usualBase : address);
    url.setUserInfo({});
    return url.authority();
}

QString ServiceSetup::keyOrigin() const
{
    return with_.defaults.value(keyOriginKey).toString();
}

bool ServiceSetup::isKeyInKeyring() const
{
    return !keyOrigin().isEmpty() && keyOrigin() != noKey;
}

std::optional<QString> ServiceSetup::configuredKey() const
{
    return keyOrigin().isEmpty() ? with_.config.value(keyName) : std::nullopt;
}

bool ServiceSetup::hasKeyFor(const QString &base) const
{
    const QString origin = originOfBase(base);
    if (isKeyInKeyring()) {
        return keyOrigin() == origin;
    }
    const QString present = this->base();
    return configuredKey() && originOfBase(present) == origin;
}

KeyedService::Ready ServiceSetup::serviceAt(const QString &base, const QString &model,
                                            const QString &key) const
{
    const auto lookup = [&](const QString &name) -> std::optional<QString> {
        if (name == keyName) {
            return key;
        }
        const bool isBase = name == baseName && !base.isEmpty();
        return isBase ? std::optional(base) : std::nullopt; // no proxy
    };
    const auto service =
        OpenAIService::make(lookup, model.isEmpty() ? usualModel : model, with_.http, with_.clock);
    if (service.isOk()) {
        return service.value();
    }
    return KeyError{KeyError::Kind::missing};
}

KeyedService::Ready ServiceSetup::ownService() const
{
    return serviceOf({base(), model(), {}});
}

KeyedService::Ready ServiceSetup::serviceOf(const Entry &entry) const
{
    if (!entry.key.trimmed().isEmpty()) {
        return serviceAt(entry.base, entry.model.trimmed(), entry.key.trimmed());
    }
    if (!hasKeyFor(entry.base)) {
        if (entry.base.isEmpty()) {
            return KeyError{KeyError::Kind::missing};
        }
        return serviceAt(entry.base, entry.model.trimmed(), noKey);
    }
    if (const auto configured = configuredKey()) {
        return serviceAt(entry.base, entry.model.trimmed(), *configured);
    }
    if (!key_.isEmpty()) {
        return serviceAt(entry.base, entry.model.trimmed(), key_);
    }
    switch (keyringPlace_) {
    case KeyPlace::awaited:
        return KeyError{KeyError::Kind::late};
    case KeyPlace::locked:
        return KeyError{KeyError::Kind::locked};
    case KeyPlace::unavailable:
        return KeyError{KeyError::Kind::unavailable};
    default:
        return KeyError{KeyError::Kind::missing};
    }
}

void ServiceSetup::whenKeyIsKnown(QObject *context, const KeyedService::Completion &completion)
{
    const auto waiter = std::make_shared<Waiter>(Waiter{context, completion});
    waiters_.append(waiter);
    if (key_.isEmpty() && keyringPlace_ == KeyPlace::awaited) {
        with_.clock.after(keyPatience, this, [this] { answerWaiters(); });
    } else {
        QMetaObject::invokeMethod(this, &ServiceSetup::answerWaiters, Qt::QueuedConnection);
    }
}

void ServiceSetup::answerWaiters()
{
    const auto waiters = std::exchange(waiters_, {});
    for (const auto &waiter : waiters) {
        if (waiter->context) {
            // an address that the environment names is not shown the key of another
            const bool isMeant = hasKeyFor(base());
            waiter->completion(isMeant ? ownService()
                                       : KeyedService::Ready(KeyError{KeyError::Kind::missing}));
        }
    }
}

void ServiceSetup::readKey()
{
    if (key_.isEmpty()) {
        keyringPlace_ = KeyPlace::awaited;
    }
    with_.secrets.get(keyAccount, this, [this, reading = ++readings_](const SecretAnswer &answer) {
        if (reading == readings_) {
            takeKey(answer);
        }
    });
}

void ServiceSetup::takeKey(const SecretAnswer &answer)
{
    keyringAnswer_ = answer.kind;
    const QString found = QString::fromUtf8(answer.value).trimmed();
    const bool isFound = answer.kind == SecretAnswer::Kind::found && !found.isEmpty();
    if (!key_.isEmpty()) {
        keyringPlace_ = isFound && found == key_ ? KeyPlace::keyring : KeyPlace::session;
    } else if (isFound) {
        key_ = found;
        keyringPlace_ = KeyPlace::keyring;
    } else {
        keyringPlace_ = answer.kind == SecretAnswer::Kind::locked ? KeyPlace::locked
            : answer.kind == SecretAnswer::Kind::unavailable      ? KeyPlace::unavailable
                                                                  : KeyPlace::missing;
    }
    answerWaiters();
    Q_EMIT changed();
}

void ServiceSetup::useSamples()
{
    with_.defaults.setValue(choiceKey, samplesChoice);
    apply();
}

void ServiceSetup::useConfigured()
{
    with_.defaults.setValue(choiceKey, {});
    apply();
}

bool ServiceSetup::useOwn(const Entry &entry)
{
    const bool keepsKey = hasKeyFor(entry.base);
    if (!with_.config.setUserValues({{baseName, entry.base}, {modelName, entry.model}})) {
        return false;
    }
    with_.defaults.setValue(choiceKey, ownChoice);
    if (const QString key = entry.key.trimmed(); !key.isEmpty()) {
        const QString origin = originOfBase(entry.base);
        with_.defaults.setValue(keyOriginKey, origin);
        key_ = key;
        keyringPlace_ = KeyPlace::session;
        with_.secrets.set(keyAccount, key.toUtf8());
        with_.secrets.unlock();
        readKey(); // tells what has become of it
    } else if (!keepsKey) {
        forgetKey();
        return true;
    }
    apply();
    return true;
}

void ServiceSetup::forgetKey()
{
    if (isKeyInKeyring()) {
        with_.secrets.remove(keyAccount);
        with_.secrets.unlock();
    }
    ++readings_;
    key_.clear();
    keyringPlace_ = KeyPlace::awaited;
    with_.defaults.setValue(keyOriginKey, noKey);
    apply();
}

void ServiceSetup::unlockKeyring()
{
    with_.secrets.unlock();
}

void ServiceSetup::apply()
{
    auto service = makeService();
    if (onServiceChanged) {
        onServiceChanged(std::move(service));
    }
    Q_EMIT changed();
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ServiceSetup.h"

#include "explain/MockAIService.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "platform/Diagnostics.h"
#include "platform/WebAddress.h"
#include "settings/SettingsKeys.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString baseName = u"OPENAI_BASE_URL"_s;
const QString modelName = u"VELLUMO_MODEL"_s;
const QString keyName = u"OPENAI_API_KEY"_s;
const QString proxyName = u"VELLUMO_PROXY_URL"_s;

// Values of settings::explanationService.
const QString samplesChoice = u"samples"_s;
const QString ownChoice = u"own"_s;

const QString noKey = u"none"_s; ///< what servers that need none are sent

QString addressOf(const QString &base)
{
    return base.isEmpty() ? OpenAIService::usualBase : base;
}

QString originOfBase(const QString &base)
{
    return originOf(QUrl(addressOf(base)));
}

} // namespace

const QString ServiceSetup::usualModel = u"gpt-5.4-nano-2026-03-17"_s;

ServiceSetup::ServiceSetup(const Collaborators &collaborators, QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , keys_(with_.defaults, with_.secrets, with_.clock)
{
    connect(&keys_, &ServiceKeys::changed, this, &ServiceSetup::changed);
    if (const auto fault = configurationFault()) {
        printDiagnostic(describe(*fault));
    }
}

std::unique_ptr<AIExplaining> ServiceSetup::makeService()
{
    const Use used = use();
    std::unique_ptr<AIExplaining> service;
    if (used == Use::own) {
        keys_.look(originOfBase(base()));
        service = std::make_unique<KeyedService>(
            [self = QPointer(this)](QObject *context, const KeyedService::Completion &completion) {
                if (self) {
                    self->whenReady(self->own(), context, completion);
                }
            });
    } else if (used != Use::samples) {
        service = configuredService();
    }
    if (service) {
        printDiagnostic(u"using OpenAI explanation service"_s);
        return service;
    }
    const bool isChosen = settings::explanationService.value(with_.defaults) == samplesChoice;
    const bool isFault = isFaulty();
    printDiagnostic(isChosen      ? u"using sample answers, as chosen"_s
                        : isFault ? u"no usable service is configured — using MockAIService"_s
                                  : u"OPENAI_API_KEY not set — using MockAIService"_s);
    return std::make_unique<MockAIService>(
        with_.clock, isFault ? SampleAnswers::misconfigured : SampleAnswers::unconfigured);
}

std::unique_ptr<AIExplaining> ServiceSetup::configuredService()
{
    const auto service = OpenAIService::make(
        [this](const QString &key) { return with_.config.value(key); },
        with_.config.value(modelName).value_or(usualModel), with_.http, with_.clock);
    if (!service.isOk()) {
        return nullptr;
    }
    auto client = std::make_unique<OpenAIService>(service.value());
    client->firebaseTokenProvider = tokenProvider;
    return client;
}

ServiceSetup::Use ServiceSetup::use() const
{
    if (AppConfig::isInEnvironment(proxyName) || AppConfig::isInEnvironment(keyName)) {
        return Use::environment;
    }
    const QString choice = settings::explanationService.value(with_.defaults);
    if (choice == ownChoice) {
        return hasOwn() ? Use::own : Use::samples;
    }
    return choice != samplesChoice && hasConfigured() ? Use::configured : Use::samples;
}

bool ServiceSetup::hasConfigured() const
{
    return with_.config.value(proxyName) || with_.config.value(keyName);
}

/// The usual service is of no use without a key.
bool ServiceSetup::hasOwn() const
{
    return !base().isEmpty() || keys_.has(originOfBase({}));
}

bool ServiceSetup::isBaseFixed()
{
    return AppConfig::isInEnvironment(baseName);
}

bool ServiceSetup::isModelFixed()
{
    return AppConfig::isInEnvironment(modelName);
}

QString ServiceSetup::base() const
{
    return isBaseFixed() ? *with_.config.value(baseName)
                         : settings::ownServiceBase.value(with_.defaults);
}

QString ServiceSetup::model() const
{
    return isModelFixed() ? *with_.config.value(modelName)
                          : settings::ownServiceModel.value(with_.defaults);
}

ServiceKeys::Place ServiceSetup::keyPlace(const QString &base) const
{
    return keys_.placeOf(originOfBase(base));
}

ServiceKeys::Removal ServiceSetup::keyRemoval(const QString &base) const
{
    return keys_.removalOf(originOfBase(base));
}

std::optional<ConfigurationFault> ServiceSetup::configurationFault() const
{
    if (const auto &fault = with_.config.fault()) {
        return fault;
    }
    for (const QString &name : {proxyName, baseName}) {
        const auto address = with_.config.value(name);
        const auto refusal =
            address ? refusalOf(QUrl(*address, QUrl::StrictMode)) : std::optional<HttpError>();
        if (refusal && refusal->kind == HttpError::Kind::noAddress) {
            return ConfigurationFault{.kind = ConfigurationFault::Kind::address, .entry = name};
        }
    }
    return std::nullopt;
}

bool ServiceSetup::isFaulty() const
{
    const bool isChosen = settings::explanationService.value(with_.defaults) == samplesChoice;
    if (isChosen || use() == Use::own || !configurationFault()) {
        return false;
    }
    const auto lookup = [this](const QString &key) { return with_.config.value(key); };
    return !OpenAIService::make(lookup, usualModel, with_.http, with_.clock).isOk();
}

QString ServiceSetup::host() const
{
    const Use used = use();
    if (used == Use::samples) {
        return {};
    }
    const auto configured = [this] {
        return with_.config.value(proxyName).value_or(
            with_.config.value(baseName).value_or(QString()));
    };
    QUrl url(addressOf(used == Use::own ? base() : configured()));
    url.setUserInfo({});
    return url.authority();
}

bool ServiceSetup::sendsToken() const
{
    const Use used = use();
    return (used == Use::configured || used == Use::environment)
        && (with_.config.value(proxyName) || !with_.config.value(baseName));
}

KeyedService::Ready ServiceSetup::serviceOf(const Entry &entry) const
{
    QString key = entry.key.trimmed();
    const QString origin = originOfBase(entry.base);
    if (key.isEmpty() && (keys_.has(origin) || entry.base.isEmpty())) {
        const auto kept = keys_.keyFor(origin);
        if (!kept.isOk()) {
            return kept.error();
        }
        key = kept.value();
    }
    const auto lookup = [&](const QString &name) -> std::optional<QString> {
        if (name == keyName) {
            return key.isEmpty() ? noKey : key;
        }
        const bool isBase = name == baseName && !entry.base.isEmpty();
        return isBase ? std::optional(entry.base) : std::nullopt; // no proxy
    };
    const QString model = entry.model.trimmed();
    const auto service =
        OpenAIService::make(lookup, model.isEmpty() ? usualModel : model, with_.http, with_.clock);
    if (service.isOk()) {
        return service.value();
    }
    return KeyError{KeyError::Kind::missing};
}

void ServiceSetup::whenReady(const Entry &entry, QObject *context,
                             const KeyedService::Completion &completion)
{
    // a key that was typed waits for nothing
    const QString origin = entry.key.trimmed().isEmpty() ? originOfBase(entry.base) : QString();
    keys_.whenKnown(origin, context, [this, entry, completion] { completion(serviceOf(entry)); });
}

void ServiceSetup::useSamples()
{
    settings::explanationService.set(with_.defaults, samplesChoice);
    apply();
}

void ServiceSetup::useConfigured()
{
    settings::explanationService.remove(with_.defaults);
    apply();
}

void ServiceSetup::useOwn(const Entry &entry)
{
    const auto store = [this](const Setting<QString> &setting, const QString &value) {
        value.isEmpty() ? setting.remove(with_.defaults) : setting.set(with_.defaults, value);
    };
    if (!isBaseFixed()) {
        store(settings::ownServiceBase, entry.base);
    }
    if (!isModelFixed()) {
        store(settings::ownServiceModel, entry.model.trimmed());
    }
    settings::explanationService.set(with_.defaults, ownChoice);
    if (const QString key = entry.key.trimmed(); !key.isEmpty()) {
        keys_.enter(originOfBase(base()), key);
    }
    apply();
}

bool ServiceSetup::resumeOwn()
{
    if (!hasOwn()) {
        return false;
    }
    settings::explanationService.set(with_.defaults, ownChoice);
    apply();
    return true;
}

void ServiceSetup::forgetKey(const QString &base)
{
    keys_.remove(originOfBase(base));
    apply();
}

void ServiceSetup::lookForKey(const QString &base)
{
    keys_.look(originOfBase(base));
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

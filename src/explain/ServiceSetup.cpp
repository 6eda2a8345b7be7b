// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ServiceSetup.h"

#include "explain/MockAIService.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "platform/Diagnostics.h"
#include "platform/WebAddress.h"
#include "settings/ConfigurationKeys.h"
#include "settings/SettingsKeys.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

// Values of settings::explanationService.
const QString samplesChoice = u"samples"_s;
const QString ownChoice = u"own"_s;

QString originOfBase(const QString &base)
{
    return ServiceEndpoint::entered(base, {}).origin();
}

} // namespace

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
    if (used == Use::Own) {
        keys_.look(originOfBase(base()));
        service = std::make_unique<KeyedService>(
            [self = QPointer(this)](QObject *context, const KeyedService::Completion &completion) {
                if (self) {
                    self->whenReady(self->own(), context, completion);
                }
            });
    } else if (used != Use::Samples) {
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
        with_.clock, isFault ? SampleAnswers::Misconfigured : SampleAnswers::Unconfigured);
}

std::unique_ptr<AIExplaining> ServiceSetup::configuredService()
{
    const auto endpoint = ServiceEndpoint::configured(with_.config);
    if (!endpoint.isOk()) {
        return nullptr;
    }
    auto client = std::make_unique<OpenAIService>(endpoint.value(), with_.http, with_.clock);
    client->firebaseTokenProvider = tokenProvider;
    return client;
}

ServiceSetup::Use ServiceSetup::use() const
{
    if (AppConfig::isInEnvironment(configuration::proxyUrl)
        || AppConfig::isInEnvironment(configuration::openAIKey)) {
        return Use::Environment;
    }
    const QString choice = settings::explanationService.value(with_.defaults);
    if (choice == ownChoice) {
        return hasOwn() ? Use::Own : Use::Samples;
    }
    return choice != samplesChoice && hasConfigured() ? Use::Configured : Use::Samples;
}

bool ServiceSetup::hasConfigured() const
{
    return with_.config.value(configuration::proxyUrl)
        || with_.config.value(configuration::openAIKey);
}

/// Returns whether an entered service can be used. The default service needs a key.
bool ServiceSetup::hasOwn() const
{
    return !base().isEmpty() || keys_.has(originOfBase({}));
}

bool ServiceSetup::isBaseFixed()
{
    return AppConfig::isInEnvironment(configuration::openAIBaseUrl);
}

bool ServiceSetup::isModelFixed()
{
    return AppConfig::isInEnvironment(configuration::model);
}

QString ServiceSetup::base() const
{
    return isBaseFixed() ? *with_.config.value(configuration::openAIBaseUrl)
                         : settings::ownServiceBase.value(with_.defaults);
}

QString ServiceSetup::model() const
{
    return isModelFixed() ? *with_.config.value(configuration::model)
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
    for (const QString &name : {configuration::proxyUrl, configuration::openAIBaseUrl}) {
        const auto address = with_.config.value(name);
        const auto refusal =
            address ? refusalOf(QUrl(*address, QUrl::StrictMode)) : std::optional<HttpError>();
        if (refusal && refusal->kind == HttpError::Kind::NoAddress) {
            return ConfigurationFault{.kind = ConfigurationFault::Kind::Address, .entry = name};
        }
    }
    return std::nullopt;
}

bool ServiceSetup::isFaulty() const
{
    const bool isChosen = settings::explanationService.value(with_.defaults) == samplesChoice;
    return !isChosen && use() != Use::Own && configurationFault()
        && !ServiceEndpoint::configured(with_.config).isOk();
}

std::optional<ServiceEndpoint> ServiceSetup::endpoint() const
{
    switch (use()) {
    case Use::Samples:
        return std::nullopt;
    case Use::Own:
        return ServiceEndpoint::entered(base(), model());
    case Use::Configured:
    case Use::Environment:
        break;
    }
    const auto endpoint = ServiceEndpoint::configured(with_.config);
    return endpoint.isOk() ? std::optional(endpoint.value()) : std::nullopt;
}

QString ServiceSetup::host() const
{
    const auto used = endpoint();
    return used ? used->host() : QString();
}

bool ServiceSetup::sendsToken() const
{
    const auto used = endpoint();
    return used && used->acceptsFirebaseToken();
}

KeyedService::Ready ServiceSetup::serviceOf(const Entry &entry) const
{
    auto endpoint = ServiceEndpoint::entered(entry.base, entry.model.trimmed());
    const QString origin = endpoint.origin();
    if (const QString typed = entry.key.trimmed(); !typed.isEmpty()) {
        endpoint = endpoint.withKey(typed);
    } else if (keys_.has(origin) || entry.base.isEmpty()) {
        const auto kept = keys_.keyFor(origin);
        if (!kept.isOk()) {
            return kept.error();
        }
        endpoint = endpoint.withKey(kept.value());
    }
    return OpenAIService(endpoint, with_.http, with_.clock);
}

void ServiceSetup::whenReady(const Entry &entry, QObject *context,
                             const KeyedService::Completion &completion)
{
    // a typed key needs no keyring
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

void ServiceSetup::loadKey(const QString &base)
{
    keys_.look(originOfBase(base));
}

void ServiceSetup::unlockKeyring()
{
    with_.secrets.unlock();
}

void ServiceSetup::apply()
{
    Q_EMIT serviceChanged();
    Q_EMIT changed();
}

} // namespace vellumo

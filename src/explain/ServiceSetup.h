// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/KeyedService.h"
#include "explain/ServiceKeys.h"
#include "settings/AppConfig.h"
#include <QObject>
#include <memory>

namespace vellumo {

class DefaultsStore;

/// Which service explains: the one that the environment or Info.json names, one that the user has
/// entered, or none, so that answers are samples.
///
/// What the user enters is kept apart from what is configured: address and model in the settings,
/// the key with ServiceKeys. A key of the environment or of Info.json goes to the address that
/// these name, or to the usual one, and never to an address that was entered; an entered key goes
/// to no other scheme, host or port than it was entered for. Only an address or a model of the
/// environment goes before what was entered.
class ServiceSetup : public QObject {
    Q_OBJECT

public:
    enum class Use : quint8 {
        samples,
        configured, ///< by Info.json alone
        own, ///< as the user has entered it
        environment, ///< which goes before everything
    };
    struct Entry {
        QString base; ///< as ServiceAddress gives it; empty for the usual one
        QString model; ///< blank for the usual one
        QString key; ///< blank to keep the one for this address, if there is one
    };
    /// All must outlive this object and the services that it makes.
    struct Collaborators {
        const AppConfig &config;
        DefaultsStore &defaults;
        SecretItems &secrets;
        HttpSession &http;
        Clock &clock;
    };

    explicit ServiceSetup(const Collaborators &collaborators, QObject *parent = nullptr);

    /// For services that were not entered by the user.
    OpenAIService::TokenProvider tokenProvider;
    /// What explains now; another one from each serviceChanged() on.
    [[nodiscard]] std::unique_ptr<AIExplaining> makeService();

    [[nodiscard]] Use use() const;
    /// Whether Info.json names a service by itself.
    [[nodiscard]] bool hasConfigured() const;
    /// Of the own service; empty for the usual ones.
    [[nodiscard]] QString base() const;
    [[nodiscard]] QString model() const;
    /// Whether the environment says it: it is used as it is, and never stored.
    [[nodiscard]] static bool isBaseFixed();
    [[nodiscard]] static bool isModelFixed();
    /// Where the own service's key for this address is.
    [[nodiscard]] ServiceKeys::Place keyPlace(const QString &base) const;
    /// What has become of the removed key of this address.
    [[nodiscard]] ServiceKeys::Removal keyRemoval(const QString &base) const;
    [[nodiscard]] const AppConfig &config() const { return with_.config; }
    /// What is wrong with the configuration, as far as a service needs it.
    [[nodiscard]] std::optional<ConfigurationFault> configurationFault() const;
    /// Where selections go now; empty for samples.
    [[nodiscard]] QString host() const;
    /// Whether the service in use is told who is signed in.
    [[nodiscard]] bool sendsToken() const;

    void useSamples();
    void useConfigured();
    void useOwn(const Entry &entry);
    /// Uses again what was entered earlier; false, with nothing changed, when that was nothing.
    bool resumeOwn();
    void forgetKey(const QString &base);
    /// Reads the key for this address if there should be one and it is not at hand.
    void lookForKey(const QString &base);
    /// Lets the keyring ask the user to open it.
    void unlockKeyring();

    /// The service of an entry that need not be saved, once its key is there, or is known not to
    /// come; as KeyedService::Source.
    void whenReady(const Entry &entry, QObject *context,
                   const KeyedService::Completion &completion);

Q_SIGNALS:
    void serviceChanged();
    void changed();

private:
    /// Whether answers are samples because of the configuration.
    [[nodiscard]] bool isFaulty() const;
    [[nodiscard]] bool hasOwn() const;
    [[nodiscard]] Entry own() const { return {base(), model(), {}}; }
    [[nodiscard]] std::unique_ptr<AIExplaining> configuredService();
    [[nodiscard]] KeyedService::Ready serviceOf(const Entry &entry) const;
    /// Where questions go now; absent for samples.
    [[nodiscard]] std::optional<ServiceEndpoint> endpoint() const;
    void apply();

    Collaborators with_;
    ServiceKeys keys_;
};

} // namespace vellumo

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

/// Chooses the explanation service: the one named by the environment, the one entered by the user,
/// the one named by Info.json, or samples.
///
/// Entered values are stored apart from configured ones: address and model in the settings, the key
/// in ServiceKeys. A key of the environment or of Info.json is sent to the address named there, or
/// to the default one, and never to an entered address; an entered key is sent only to the origin
/// it was entered for. Only an address or a model of the environment overrides an entered one.
class ServiceSetup : public QObject {
    Q_OBJECT

public:
    enum class Use : quint8 {
        Samples,
        Configured, ///< by Info.json alone
        Own, ///< entered by the user
        Environment, ///< by the environment, which overrides the others
    };
    struct Entry {
        QString base; ///< normalized by ServiceAddress; empty for the default
        QString model; ///< blank for the default
        QString key; ///< blank to keep the stored one for this address
    };
    /// All must outlive this object and the services that it creates.
    struct Collaborators {
        const AppConfig &config;
        DefaultsStore &defaults;
        SecretItems &secrets;
        HttpSession &http;
        Clock &clock;
    };

    explicit ServiceSetup(const Collaborators &collaborators, QObject *parent = nullptr);

    /// Used for services that were not entered by the user.
    OpenAIService::TokenProvider tokenProvider;
    /// Creates the current service; serviceChanged() reports when to call it again.
    [[nodiscard]] std::unique_ptr<AIExplaining> makeService();

    [[nodiscard]] Use use() const;
    /// Returns whether Info.json names a service by itself.
    [[nodiscard]] bool hasConfigured() const;
    /// Base address and model of the entered service; empty for the defaults.
    [[nodiscard]] QString base() const;
    [[nodiscard]] QString model() const;
    /// Returns whether the environment sets the value, which is then used unchanged and never
    /// stored.
    [[nodiscard]] static bool isBaseFixed();
    [[nodiscard]] static bool isModelFixed();
    /// Returns where the entered service's key for this address is.
    [[nodiscard]] ServiceKeys::Place keyPlace(const QString &base) const;
    /// Returns the state of the removal of this address's key.
    [[nodiscard]] ServiceKeys::Removal keyRemoval(const QString &base) const;
    [[nodiscard]] const AppConfig &config() const { return with_.config; }
    /// Returns what is wrong with the parts of the configuration that a service needs.
    [[nodiscard]] std::optional<ConfigurationFault> configurationFault() const;
    /// Returns the host and port that selections are sent to; empty for samples.
    [[nodiscard]] QString host() const;
    /// Returns whether the current service gets the ID token of the signed-in user.
    [[nodiscard]] bool sendsToken() const;

    void useSamples();
    void useConfigured();
    void useOwn(const Entry &entry);
    /// Switches to the service that was entered earlier. Returns false, without a change, if there
    /// is none.
    bool resumeOwn();
    void forgetKey(const QString &base);
    /// Reads the key for this address from the keyring if it is listed but not in memory.
    void loadKey(const QString &base);
    /// Lets the keyring prompt the user to open it.
    void unlockKeyring();

    /// Creates the service of an entry, which need not be saved, once its key is available or known
    /// to be unavailable. Completes like KeyedService::Source.
    void whenReady(const Entry &entry, QObject *context,
                   const KeyedService::Completion &completion);

Q_SIGNALS:
    void serviceChanged();
    void changed();

private:
    /// Returns whether samples are used because of a mistake in the configuration.
    [[nodiscard]] bool isFaulty() const;
    [[nodiscard]] bool hasOwn() const;
    [[nodiscard]] Entry own() const { return {base(), model(), {}}; }
    [[nodiscard]] std::unique_ptr<AIExplaining> configuredService();
    [[nodiscard]] KeyedService::Ready serviceOf(const Entry &entry) const;
    /// Returns where questions are sent; absent for samples.
    [[nodiscard]] std::optional<ServiceEndpoint> endpoint() const;
    void apply();

    Collaborators with_;
    ServiceKeys keys_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppConfig.h"
#include "explain/KeyedService.h"
#include "platform/SecretItems.h"
#include <QObject>
#include <QPointer>
#include <memory>

namespace vellumo {

class DefaultsStore;

/// Which service explains: the one that the environment or Info.json names, one that the user has
/// entered, or none, so that answers are samples.
///
/// What the user enters goes to where it belongs: address and model to the user's Info.json, the
/// key to the keyring and nowhere else. The keyring is asked only if it has the key for the service
/// in use, and is never waited for: questions that come too early wait, for a bounded time. A key
/// is sent to no other scheme, host or port than the one it was entered for.
class ServiceSetup : public QObject {
    Q_OBJECT

public:
    enum class Use : quint8 {
        samples,
        configured, ///< by Info.json alone
        own, ///< as the user has entered it
        environment, ///< which goes before everything
    };
    enum class KeyPlace : quint8 {
        none,
        configuration, ///< the environment or Info.json
        awaited, ///< the keyring has not answered yet
        keyring,
        session, ///< entered in this run, and not in the keyring, or not yet
        locked, ///< in a keyring that is closed
        missing, ///< not where it should be, or meant for another address
        unavailable, ///< in a keyring that is not there
    };
    struct Entry {
        QString base; ///< as ServiceAddress gives it
        QString model; ///< blank for the usual one
        QString key; ///< blank to keep the one for this address, if there is one
    };
    /// All must outlive this object and the services that it makes.
    struct Collaborators {
        AppConfig &config;
        DefaultsStore &defaults;
        SecretItems &secrets;
        HttpSession &http;
        Clock &clock;
    };

    static const QString usualModel;

    explicit ServiceSetup(const Collaborators &collaborators, QObject *parent = nullptr);

    /// For services that were not entered by the user.
    OpenAIService::TokenProvider tokenProvider;
    /// Called with what explains from now on.
    std::function<void(std::unique_ptr<AIExplaining>)> onServiceChanged;

    /// What explains now.
    [[nodiscard]] std::unique_ptr<AIExplaining> makeService();

    [[nodiscard]] Use use() const;
    /// Whether Info.json names a service by itself.
    [[nodiscard]] bool hasConfigured() const;
    [[nodiscard]] KeyPlace keyPlace() const;
    /// What the keyring said last.
    [[nodiscard]] SecretAnswer::Kind keyringAnswer() const { return keyringAnswer_; }
    /// As they are set anywhere; empty for the usual ones.
    [[nodiscard]] QString base() const;
    [[nodiscard]] QString model() const;
    [[nodiscard]] const AppConfig &config() const { return with_.config; }
    /// Where selections go now; empty for samples.
    [[nodiscard]] QString host() const;

    /// Whether a key is known that may be sent to this address.
    [[nodiscard]] bool hasKeyFor(const QString &base) const;

    void useSamples();
    void useConfigured();
    /// False, with nothing changed, when Info.json cannot be written.
    [[nodiscard]] bool useOwn(const Entry &entry);
    void forgetKey();
    /// Lets the keyring ask the user to open it.
    void unlockKeyring();

    /// The service of an entry that has not been saved.
    [[nodiscard]] KeyedService::Ready serviceOf(const Entry &entry) const;

Q_SIGNALS:
    void changed();

private:
    struct Waiter {
        QPointer<QObject> context;
        KeyedService::Completion completion;
    };

    [[nodiscard]] bool isForced() const;
    [[nodiscard]] QString keyOrigin() const;
    [[nodiscard]] bool isKeyInKeyring() const;
    [[nodiscard]] std::optional<QString> configuredKey() const;
    [[nodiscard]] KeyedService::Ready serviceAt(const QString &base, const QString &model,
                                                const QString &key) const;
    [[nodiscard]] KeyedService::Ready ownService() const;
    void whenKeyIsKnown(QObject *context, const KeyedService::Completion &completion);
    void readKey();
    void takeKey(const SecretAnswer &answer);
    void answerWaiters();
    void apply();

    Collaborators with_;
    QString key_; ///< of the keyring, or entered in this run
    KeyPlace keyringPlace_ = KeyPlace::awaited; ///< of that key
    SecretAnswer::Kind keyringAnswer_ = SecretAnswer::Kind::missing;
    int readings_ = 0; ///< an answer to an older one is void
    QList<std::shared_ptr<Waiter>> waiters_;
};

} // namespace vellumo

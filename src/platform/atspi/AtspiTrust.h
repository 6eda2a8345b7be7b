// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <functional>
#include <optional>

namespace vellumo {

class ConsentPrompting;
class DefaultsStore;
class SessionBus;

/// Keys of the settings with the user's decisions.
struct TrustSettings {
    QString consent; ///< boolean: the user has consented
    QString leftOff; ///< boolean: the user declined to turn the desktop's switch back on
};

/// Whether this program may read other applications: the user has consented, and the desktop's
/// accessibility switch (org.a11y.Status.IsEnabled on the session bus) is on. Main thread only.
class AtspiTrust : public QObject {
    Q_OBJECT

public:
    /// Opens the session bus. With consent it blocks shortly for the switch's state, so that
    /// isTrusted() is usually right at once.
    AtspiTrust(SessionBus &session, DefaultsStore &defaults, TrustSettings settings,
               ConsentPrompting &prompting, QObject *parent = nullptr);

    [[nodiscard]] bool isTrusted() const;

    /// Turns the switch on without asking if the user has consented before and the switch has been
    /// off since this program started; otherwise asks the user. Returns isTrusted() at once.
    bool requestTrust();

    void refresh();

    /// Removes the consent. The desktop's switch stays on, since other programs may need it.
    void withdrawConsent();

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void onPropertiesChanged(const QDBusMessage &message);

private:
    [[nodiscard]] bool hasConsent() const;
    /// Returns whether the user declined to turn the switch back on.
    [[nodiscard]] bool isLeftOff() const;
    void watchSwitch();
    void onServiceOwnerChanged(const QString &newOwner);
    void adopt(std::optional<bool> enabled);
    void fetch(const QDBusPendingCall &call);
    void switchOn();
    void ask();
    /// Prints the problem, once per run and only with consent.
    void reportProblem(const QString &problem);
    void onAnswered(bool allowed);
    void whenFinished(const QDBusPendingCall &call,
                      std::function<void(const QDBusPendingCall &)> handler);

    SessionBus &session_;
    DefaultsStore &defaults_;
    TrustSettings settings_;
    ConsentPrompting &prompting_;
    std::optional<bool> enabled_; ///< absent while the switch cannot be read
    bool wasEnabled_ = false; ///< the switch was on at some time during this run
    bool starting_ = true;
    bool fetching_ = false;
    bool switchOnWanted_ = false; ///< requested while the switch's state was unknown
    bool isProblemReported_ = false;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "platform/Result.h"
#include "platform/SecretItems.h"
#include "settings/Setting.h"
#include <QHash>
#include <QList>
#include <QPointer>
#include <QSet>
#include <functional>
#include <memory>

namespace vellumo {

class Clock;
class DefaultsStore;

/// The keys of services that the user has entered: one for each scheme, host and port, which are
/// part of its name in the keyring, so that no key can be had for another origin than its own.
/// Keys are in the keyring, and in memory once they are read or entered, and nowhere else.
///
/// The settings say for which origins there are keys, and which of them the keyring has yet to give
/// up. It is asked about no other, and is never waited for.
class ServiceKeys : public QObject {
    Q_OBJECT

public:
    enum class Place : quint8 {
        none, ///< never entered, or removed
        awaited, ///< the keyring has not answered yet
        keyring,
        storing, ///< entered in this run, and on its way to the keyring
        owed, ///< entered in this run, for a keyring that is closed
        refused, ///< entered in this run; the keyring is open and does not have it
        unkept, ///< entered in this run, and there is no keyring
        locked, ///< in a keyring that is closed
        missing, ///< not in the keyring, although it should be
        unavailable, ///< in a keyring that is not there
    };
    enum class Removal : quint8 {
        done,
        asked, ///< the keyring has not answered yet
        owed, ///< until the keyring is open, in this run or a later one
    };

    /// All must outlive this object.
    ServiceKeys(DefaultsStore &defaults, SecretItems &secrets, Clock &clock,
                QObject *parent = nullptr);

    /// Whether there should be a key.
    [[nodiscard]] bool has(const QString &origin) const;
    [[nodiscard]] Place placeOf(const QString &origin) const;
    [[nodiscard]] Removal removalOf(const QString &origin) const;
    /// The key, or why it is not at hand.
    [[nodiscard]] Result<QString, KeyError> keyFor(const QString &origin) const;

    /// Both let the keyring ask the user to open it.
    void enter(const QString &origin, const QString &key);
    void remove(const QString &origin);
    /// Reads the key if there should be one and it is not at hand.
    void look(const QString &origin);
    /// Calls back exactly once and never before it returns, unless `context` is gone: when the
    /// keyring has answered, or after five seconds.
    void whenKnown(const QString &origin, QObject *context, std::function<void()> completion);

Q_SIGNALS:
    void changed();

private:
    struct Held {
        QString key = {}; ///< empty when it is not at hand
        Place place = Place::awaited;
    };
    struct Waiter {
        QString origin;
        QPointer<QObject> context;
        std::function<void()> completion;
    };

    void setListed(const Setting<QStringList> &list, const QString &origin, bool isListed);
    /// What an older question about this origin finds out is void.
    void ask(const QString &origin, const std::function<void(const SecretAnswer &)> &then);
    void read(const QString &origin);
    void take(const QString &origin, const SecretAnswer &answer);
    void checkRemoval(const QString &origin);
    void removeOwed();
    void answer(const std::shared_ptr<Waiter> &waiter);
    void answerAll(const QString &origin);

    DefaultsStore &defaults_;
    SecretItems &secrets_;
    Clock &clock_;
    QHash<QString, Held> held_; ///< by origin; what this run has to do with
    QSet<QString> unremoved_; ///< owed removals that the keyring has not done
    QHash<QString, int> questions_; ///< how many were asked about an origin
    QList<std::shared_ptr<Waiter>> waiters_;
};

} // namespace vellumo

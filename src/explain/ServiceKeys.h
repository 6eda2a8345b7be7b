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

/// The keys of services that the user has entered, one for each origin (scheme, host and port). The
/// origin is part of the item's name in the keyring, so that a key is never used for another
/// origin. Keys are only in the keyring, and in memory once read or entered.
///
/// The settings list the origins that have keys, and those whose key is still to be removed from
/// the keyring. The keyring is asked about no others. Calls never block.
class ServiceKeys : public QObject {
    Q_OBJECT

public:
    enum class Place : quint8 {
        None, ///< never entered, or removed
        Awaited, ///< the keyring has not answered yet
        Keyring,
        Storing, ///< entered in this run, write to the keyring is pending
        Owed, ///< entered in this run, the keyring is closed
        Refused, ///< entered in this run, the open keyring did not store it
        Unkept, ///< entered in this run, there is no keyring
        Locked, ///< the keyring is closed
        Missing, ///< not in the keyring, although it should be
        Unavailable, ///< there is no keyring
    };
    enum class Removal : quint8 {
        Done,
        Asked, ///< the keyring has not answered yet
        Owed, ///< pending until the keyring is open, in this run or a later one
    };

    /// All must outlive this object.
    ServiceKeys(DefaultsStore &defaults, SecretItems &secrets, Clock &clock,
                QObject *parent = nullptr);

    /// Returns whether the settings list a key for the origin.
    [[nodiscard]] bool has(const QString &origin) const;
    [[nodiscard]] Place placeOf(const QString &origin) const;
    [[nodiscard]] Removal removalOf(const QString &origin) const;
    /// Returns the key, or why it is not available.
    [[nodiscard]] Result<QString, KeyError> keyFor(const QString &origin) const;

    /// enter() and remove() let the keyring prompt the user.
    void enter(const QString &origin, const QString &key);
    void remove(const QString &origin);
    /// Reads the key from the keyring if it is listed but not in memory.
    void look(const QString &origin);
    /// Calls back exactly once, never before it returns, when the keyring has answered or after
    /// five seconds; never after `context` is destroyed.
    void whenKnown(const QString &origin, QObject *context, std::function<void()> completion);

Q_SIGNALS:
    void changed();

private:
    struct Held {
        QString key = {}; ///< empty when it is not in memory
        Place place = Place::Awaited;
    };
    struct Waiter {
        QString origin;
        QPointer<QObject> context;
        std::function<void()> completion;
    };

    void setListed(const Setting<QStringList> &list, const QString &origin, bool isListed);
    /// Queries the keyring. Results of older queries for this origin are ignored.
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
    QHash<QString, Held> held_; ///< origins used in this run
    QSet<QString> unremoved_; ///< pending removals that the keyring has not done
    QHash<QString, int> questions_; ///< number of queries for an origin
    QList<std::shared_ptr<Waiter>> waiters_;
};

} // namespace vellumo

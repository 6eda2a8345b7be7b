// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ServiceKeys.h"

#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "settings/SettingsKeys.h"

#include <QStringList>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// Maximum time that a question waits for the keyring.
constexpr auto keyTimeout = 5s;

QString accountOf(const QString &origin)
{
    return u"serviceKey:"_s + origin;
}

} // namespace

ServiceKeys::ServiceKeys(DefaultsStore &defaults, SecretItems &secrets, Clock &clock,
                         QObject *parent)
    : QObject(parent)
    , defaults_(defaults)
    , secrets_(secrets)
    , clock_(clock)
{
    connect(&secrets_, &SecretItems::becameReadable, this, [this] {
        removeOwed();
        const QStringList origins = held_.keys();
        for (const QString &origin : origins) {
            if (held_.value(origin).place != Place::Keyring) {
                read(origin);
            }
        }
    });
    removeOwed();
}

bool ServiceKeys::has(const QString &origin) const
{
    return settings::serviceKeysFor.value(defaults_).contains(origin);
}

ServiceKeys::Place ServiceKeys::placeOf(const QString &origin) const
{
    return has(origin) ? held_.value(origin).place : Place::None;
}

ServiceKeys::Removal ServiceKeys::removalOf(const QString &origin) const
{
    return !settings::serviceKeysToRemove.value(defaults_).contains(origin) ? Removal::Done
        : unremoved_.contains(origin)                                       ? Removal::Owed
                                                                            : Removal::Asked;
}

Result<QString, KeyError> ServiceKeys::keyFor(const QString &origin) const
{
    if (const QString key = held_.value(origin).key; !key.isEmpty()) {
        return key;
    }
    switch (placeOf(origin)) {
    case Place::Awaited:
        return KeyError{KeyError::Kind::Late};
    case Place::Locked:
        return KeyError{KeyError::Kind::Locked};
    case Place::Unavailable:
        return KeyError{KeyError::Kind::Unavailable};
    default:
        return KeyError{KeyError::Kind::Missing};
    }
}

void ServiceKeys::enter(const QString &origin, const QString &key)
{
    setListed(settings::serviceKeysToRemove, origin, false);
    setListed(settings::serviceKeysFor, origin, true);
    held_.insert(origin, {key, Place::Storing});
    secrets_.set(accountOf(origin), key.toUtf8());
    secrets_.unlock();
    read(origin); // reads it back for the result
    answerAll(origin);
    Q_EMIT changed();
}

void ServiceKeys::remove(const QString &origin)
{
    setListed(settings::serviceKeysFor, origin, false);
    setListed(settings::serviceKeysToRemove, origin, true);
    held_.remove(origin);
    unremoved_.remove(origin);
    secrets_.remove(accountOf(origin));
    secrets_.unlock();
    checkRemoval(origin);
    answerAll(origin);
    Q_EMIT changed();
}

void ServiceKeys::look(const QString &origin)
{
    if (has(origin) && held_.value(origin).key.isEmpty()) {
        read(origin);
    }
}

void ServiceKeys::whenKnown(const QString &origin, QObject *context,
                            std::function<void()> completion)
{
    if (has(origin) && !held_.contains(origin)) {
        read(origin);
    }
    const auto waiter = std::make_shared<Waiter>(Waiter{origin, context, std::move(completion)});
    waiters_.append(waiter);
    if (placeOf(origin) == Place::Awaited) {
        clock_.after(keyTimeout, this, [this, waiter] { answer(waiter); });
    } else {
        QMetaObject::invokeMethod(
            this, [this, waiter] { answer(waiter); }, Qt::QueuedConnection);
    }
}

void ServiceKeys::setListed(const Setting<QStringList> &list, const QString &origin, bool isListed)
{
    QStringList origins = list.value(defaults_);
    origins.removeAll(origin);
    if (isListed) {
        origins.append(origin);
    }
    origins.isEmpty() ? list.remove(defaults_) : list.set(defaults_, origins);
}

void ServiceKeys::ask(const QString &origin, const std::function<void(const SecretAnswer &)> &then)
{
    const int question = ++questions_[origin];
    secrets_.get(accountOf(origin), this, [this, origin, question, then](const auto &answer) {
        if (question == questions_.value(origin)) {
            then(answer);
        }
    });
}

void ServiceKeys::read(const QString &origin)
{
    if (Held &held = held_[origin]; held.key.isEmpty()) {
        held.place = Place::Awaited;
    }
    ask(origin, [this, origin](const SecretAnswer &answer) { take(origin, answer); });
}

void ServiceKeys::take(const QString &origin, const SecretAnswer &answer)
{
    using Kind = SecretAnswer::Kind;
    Held &held = held_[origin];
    const bool isEntered = !held.key.isEmpty();
    const QString found = QString::fromUtf8(answer.value).trimmed();
    if (answer.kind == Kind::Found && !found.isEmpty() && (!isEntered || held.key == found)) {
        held = {found, Place::Keyring};
    } else if (answer.kind == Kind::Locked) {
        held.place = isEntered ? Place::Owed : Place::Locked;
    } else if (answer.kind == Kind::Unavailable) {
        held.place = isEntered ? Place::Unkept : Place::Unavailable;
    } else {
        held.place = isEntered ? Place::Refused : Place::Missing;
    }
    answerAll(origin);
    Q_EMIT changed();
}

void ServiceKeys::checkRemoval(const QString &origin)
{
    ask(origin, [this, origin](const SecretAnswer &answer) {
        if (answer.kind == SecretAnswer::Kind::Missing) {
            unremoved_.remove(origin);
            setListed(settings::serviceKeysToRemove, origin, false);
        } else {
            unremoved_.insert(origin);
        }
        Q_EMIT changed();
    });
}

void ServiceKeys::removeOwed()
{
    const QStringList origins = settings::serviceKeysToRemove.value(defaults_);
    for (const QString &origin : origins) {
        secrets_.remove(accountOf(origin));
        checkRemoval(origin);
    }
}

void ServiceKeys::answer(const std::shared_ptr<Waiter> &waiter)
{
    if (waiters_.removeOne(waiter) && waiter->context) {
        waiter->completion();
    }
}

void ServiceKeys::answerAll(const QString &origin)
{
    const auto waiters = waiters_;
    for (const auto &waiter : waiters) {
        if (waiter->origin == origin) {
            answer(waiter);
        }
    }
}

} // namespace vellumo

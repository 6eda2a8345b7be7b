// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <functional>

namespace vellumo {

struct SecretAnswer {
    enum class Kind : quint8 {
        Found,
        Missing,
        Locked, ///< the store is closed; there may be a value
        Unavailable, ///< there is no store, or it does not respond
    };
    Kind kind = Kind::Unavailable;
    QByteArray value = {}; ///< for found
};

/// Stores small secrets of this program in the user's secret store, one value for each account
/// name. The store belongs to another process and may be closed, absent, slow or hung. Nothing here
/// blocks or reports an error, and only unlock() makes the store prompt the user. Operations run in
/// the order of the calls. Main thread only.
class SecretItems : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    using Completion = std::function<void(const SecretAnswer &)>;

    /// The completion runs exactly once and never before the call returns; it never runs when
    /// `context` is destroyed first. A store that hangs delays it until a timeout.
    virtual void get(const QString &account, QObject *context, Completion completion) = 0;

    /// Replaces the account's value. While the store is closed or absent, this and remove() stay
    /// pending, and are done when it opens in this run.
    virtual void set(const QString &account, const QByteArray &value) = 0;
    virtual void remove(const QString &account) = 0;

    /// Lets the store prompt the user: to open it, if it is closed and an operation is pending or
    /// could not be read, and to agree to earlier changes, if it requires that. Call it only as
    /// part of an action of the user.
    virtual void unlock() = 0;

Q_SIGNALS:
    /// Emitted when values that could not be read may be readable, and pending changes may have
    /// been made.
    void becameReadable();
};

} // namespace vellumo

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
        found,
        missing,
        locked, ///< the user has not opened the store yet: there may be a value
        unavailable, ///< there is no store, or it does not answer
    };
    Kind kind = Kind::unavailable;
    QByteArray value = {}; ///< of found
};

/// Small secrets of this program in the user's own store, one value for each account name. The
/// store belongs to another process: it may be closed, absent, slow or hang. Nothing here blocks or
/// reports an error, and nothing but unlock() makes the store ask the user for anything. What is
/// asked for is done in that order. Main thread only.
class SecretItems : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    using Completion = std::function<void(const SecretAnswer &)>;

    /// The completion runs exactly once and never before the call returns; not when `context` is
    /// destroyed first. A store that hangs is waited for, without blocking, for some time.
    virtual void get(const QString &account, QObject *context, Completion completion) = 0;

    /// Replaces what the account has. While the store is closed or absent, this and remove() are
    /// owed to it, and done when it opens in this run.
    virtual void set(const QString &account, const QByteArray &value) = 0;
    virtual void remove(const QString &account) = 0;

    /// Lets the store ask the user to open it, if it is closed and something is owed to it or could
    /// not be read, or to agree to the changes before, if it wants that. Only as part of something
    /// that the user does.
    virtual void unlock() = 0;

Q_SIGNALS:
    /// What could not be read may be readable now, and changes may have been done.
    void becameReadable();
};

} // namespace vellumo

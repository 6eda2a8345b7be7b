// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo {

class SecretItems;

/// Stores texts in the user's keyring by account name. A failed write is not reported. Main thread
/// only.
class KeychainStore {
public:
    using Completion = std::function<void(const std::optional<QString> &)>;

    /// The items must outlive the store.
    explicit KeychainStore(SecretItems &items) : items_(items) { }

    /// Reads an item; absent when there is none or it cannot be read. The completion runs once,
    /// never before the call returns and never after `context` is destroyed.
    void get(const QString &account, QObject *context, Completion completion);

    /// Completes with whether the keyring is open and has no such item. The completion runs as for
    /// get().
    void checkMissing(const QString &account, QObject *context,
                      std::function<void(bool isMissing)> completion);

    void set(const QString &value, const QString &account);
    void remove(const QString &account);

    /// Lets the keyring prompt the user to open it, if it is closed.
    void unlock();

    /// Runs `action` whenever unreadable items may have become readable, until `context` is
    /// destroyed.
    void onReadable(QObject *context, std::function<void()> action);

private:
    SecretItems &items_;
};

} // namespace vellumo

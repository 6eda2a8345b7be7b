// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo {

class SecretItems;

/// Texts that outlive the program, by account name, in the user's keyring. A write that fails is
/// silent.
class KeychainStore {
public:
    using Completion = std::function<void(const std::optional<QString> &)>;

    /// The items must outlive the store.
    explicit KeychainStore(SecretItems &items) : items_(items) { }

    /// Nothing when there is no such item or it cannot be read. The completion runs once and never
    /// before the call returns; not when `context` is destroyed first.
    void get(const QString &account, QObject *context, Completion completion);

    /// Whether the keyring is open and has no such item. The completion runs as that of get().
    void whetherMissing(const QString &account, QObject *context,
                        std::function<void(bool isMissing)> completion);

    void set(const QString &value, const QString &account);
    void remove(const QString &account);

    /// Lets the keyring ask the user to open it, if it is closed.
    void unlock();

    /// Runs whenever what could not be read may be readable, until `context` is destroyed.
    void onReadable(QObject *context, std::function<void()> action);

private:
    SecretItems &items_;
};

} // namespace vellumo

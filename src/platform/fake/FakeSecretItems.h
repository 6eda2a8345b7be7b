// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretItems.h"
#include <QHash>
#include <QPointer>
#include <optional>

namespace vellumo {

/// A store that can be closed, and that can delay its answers.
class FakeSecretItems : public SecretItems {
    Q_OBJECT

public:
    QHash<QString, QByteArray> values;
    bool isLocked = false;
    bool isAbsent = false; ///< there is no keyring
    bool isRefusing = false; ///< rejects writes and removals
    bool isHung = false; ///< queries stay pending until answerAll()
    int unlockRequests = 0;

    void get(const QString &account, QObject *context, Completion completion) override;
    void set(const QString &account, const QByteArray &value) override;
    void remove(const QString &account) override;
    void unlock() override { ++unlockRequests; }

    /// Opens the store, does pending operations and emits becameReadable().
    void open();
    /// Drops pending operations, as at the end of the program.
    void forgetOwed() { owed_.clear(); }
    /// Answers pending queries, and later ones at once.
    void answerAll();

private:
    QList<std::function<void()>> waiting_;
    QHash<QString, std::optional<QByteArray>> owed_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretItems.h"
#include <QHash>
#include <QPointer>
#include <optional>

namespace vellumo {

/// A store that can be closed, and that answers when the test says so.
class FakeSecretItems : public SecretItems {
    Q_OBJECT

public:
    QHash<QString, QByteArray> values;
    bool isLocked = false;
    bool isAbsent = false; ///< as without a keyring
    bool isRefusing = false; ///< takes nothing new
    bool isHung = false; ///< questions wait until answerAll()
    int unlockRequests = 0;

    void get(const QString &account, QObject *context, Completion completion) override;
    void set(const QString &account, const QByteArray &value) override;
    void remove(const QString &account) override;
    void unlock() override { ++unlockRequests; }

    /// Opens the store, does what is owed to it and says so.
    void open();
    /// What happens to what is owed when the program ends.
    void forgetOwed() { owed_.clear(); }
    /// Answers the questions that have waited, and any later one.
    void answerAll();

private:
    QList<std::function<void()>> waiting_;
    QHash<QString, std::optional<QByteArray>> owed_;
};

} // namespace vellumo

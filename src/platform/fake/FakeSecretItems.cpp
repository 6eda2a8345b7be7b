// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeSecretItems.h"

namespace vellumo {

void FakeSecretItems::get(const QString &account, QObject *context, Completion completion)
{
    const auto answer = [this, account, context = QPointer<QObject>(context),
                         completion = std::move(completion)] {
        if (!context) {
            return;
        }
        const auto found = values.constFind(account);
        if (isAbsent) {
            completion({SecretAnswer::Kind::Unavailable});
        } else if (isLocked) {
            completion({SecretAnswer::Kind::Locked});
        } else if (found == values.constEnd()) {
            completion({SecretAnswer::Kind::Missing});
        } else {
            completion({SecretAnswer::Kind::Found, *found});
        }
    };
    if (isHung) {
        waiting_.append(answer);
    } else {
        QMetaObject::invokeMethod(this, answer, Qt::QueuedConnection);
    }
}

void FakeSecretItems::set(const QString &account, const QByteArray &value)
{
    if (isLocked || isAbsent) {
        owed_.insert(account, value);
    } else if (!isRefusing) {
        values.insert(account, value);
    }
}

void FakeSecretItems::remove(const QString &account)
{
    if (isLocked || isAbsent) {
        owed_.insert(account, std::nullopt);
    } else if (!isRefusing) {
        values.remove(account);
    }
}

void FakeSecretItems::open()
{
    isLocked = false;
    isAbsent = false;
    const auto owed = std::exchange(owed_, {});
    for (auto it = owed.begin(); it != owed.end(); ++it) {
        if (it.value()) {
            values.insert(it.key(), *it.value());
        } else {
            values.remove(it.key());
        }
    }
    Q_EMIT becameReadable();
}

void FakeSecretItems::answerAll()
{
    isHung = false;
    const auto waiting = std::exchange(waiting_, {});
    for (const auto &answer : waiting) {
        answer();
    }
}

} // namespace vellumo

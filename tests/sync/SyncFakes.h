// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/Authenticating.h"
#include "notes/ReadingNote.h"
#include "sync/DataConnectHistory.h"

namespace vellumo::test {

/// A session controlled by a test.
class FakeAuth : public Authenticating {
public:
    std::optional<User> signedIn = User{QStringLiteral("u"), QStringLiteral("u@example.org")};
    Result<std::optional<QString>, AuthError> token = std::optional(QStringLiteral("token-1"));

    [[nodiscard]] std::optional<User> user() const override { return signedIn; }

    void idToken(QObject *context, IdTokenCompletion completion) override
    {
        QMetaObject::invokeMethod(
            context, [completion, result = token] { completion(result); }, Qt::QueuedConnection);
    }
};

inline ReadingNote makeNote(const QString &text, int followUps = 0)
{
    ReadingNote note{QUuid::createUuid(),         text, QStringLiteral("t"),
                     QStringLiteral("e ") + text, 1,    {}};
    for (int i = 0; i < followUps; ++i)
        note.followUps.append(
            {QUuid::createUuid(), QString::number(i), QStringLiteral("a ") + text});
    return note;
}

/// Reads the configuration from a list such as an environment.
inline DataConnectHistory::Lookup lookupIn(const QList<std::pair<QString, QString>> &values)
{
    return [values](const QString &key) -> std::optional<QString> {
        for (const auto &[name, value] : values) {
            if (name == key)
                return value;
        }
        return std::nullopt;
    };
}

} // namespace vellumo::test

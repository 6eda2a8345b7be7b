// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthError.h"
#include "platform/Result.h"
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo {

/// The account that is signed in.
struct User {
    QString uid;
    QString email; ///< empty when the account has none
    friend bool operator==(const User &, const User &) = default;
};

using IdTokenCompletion = std::function<void(Result<std::optional<QString>, AuthError>)>;

/// The session, for classes that send requests in the user's name.
class Authenticating {
public:
    virtual ~Authenticating() = default;

    /// Returns the account; absent while signed out.
    [[nodiscard]] virtual std::optional<User> user() const = 0;

    /// Returns the account's id, which is independent of its address; empty while signed out.
    [[nodiscard]] QString uid() const
    {
        const auto current = user();
        return current ? current->uid : QString();
    }

    /// Gets a token for requests in the user's name that is valid for at least a minute; absent
    /// when signed out. It must never be logged or stored. The completion runs exactly once, on the
    /// main thread and never before the call returns; when `context` is destroyed first, it never
    /// runs.
    virtual void idToken(QObject *context, IdTokenCompletion completion) = 0;
};

} // namespace vellumo

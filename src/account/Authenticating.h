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

/// Who is signed in.
struct User {
    QString uid;
    QString email; ///< empty when the account has none
    friend bool operator==(const User &, const User &) = default;
};

using IdTokenCompletion = std::function<void(Result<std::optional<QString>, AuthError>)>;

/// The session, as those see it who send requests in the user's name.
class Authenticating {
public:
    virtual ~Authenticating() = default;

    /// Absent while signed out.
    [[nodiscard]] virtual std::optional<User> user() const = 0;

    /// Whose session it is, which an address that changes leaves as it was; empty while signed out.
    [[nodiscard]] QString uid() const
    {
        const auto current = user();
        return current ? current->uid : QString();
    }

    /// A token for requests in the user's name, valid for a minute at least; nothing when signed
    /// out. Secret: never logged or stored. The completion runs exactly once, on the main thread
    /// and never before the call returns; when `context` is destroyed first, it never runs.
    virtual void idToken(QObject *context, IdTokenCompletion completion) = 0;
};

} // namespace vellumo

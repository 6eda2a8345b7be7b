// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QString>

namespace vellumo {

class BilingualText;

/// Why there is no session, or no ID token for the session.
struct AuthError {
    enum class Kind : quint8 {
        server, ///< the token service refused; `message` is for the user
        notConfigured, ///< no account service is configured
        Network, ///< no answer came
        Unreadable, ///< the answer cannot be decoded
        NoBrowser, ///< the login page could not be opened
        Superseded, ///< another sign-in was started
        /// The login page returned without a session, or the session was ended meanwhile.
        Unfinished,
        OtherAccount, ///< the token service names another account than the login page did
        Cancelled, ///< cancelled by the user; not shown
    };
    Kind kind = Kind::server;
    QString message = {}; ///< for server: unchanged, so that it may repeat what was sent
    int status = 0; ///< for server: the HTTP status
    HttpError::Kind network = HttpError::Kind::Other; ///< for Network
    friend bool operator==(const AuthError &, const AuthError &) = default;

    /// Returns whether the session itself was refused, as opposed to a temporary failure of the
    /// request.
    [[nodiscard]] bool endsSession() const
    {
        return kind == Kind::OtherAccount
            || (kind == Kind::server && status >= 400 && status <= 499 && status != 429);
    }
};

/// Returns the text for the user, in the current language.
[[nodiscard]] QString describe(const AuthError &error, const BilingualText &texts);

/// Returns a description such as "server said TOKEN_EXPIRED" or "timed out", for a log. Of a
/// server's message it includes only a code or a status.
[[nodiscard]] QString summary(const AuthError &error);

} // namespace vellumo

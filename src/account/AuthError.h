// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QString>

namespace vellumo {

class BilingualText;

/// Why there is no session, or no ID token for the one there is.
struct AuthError {
    enum class Kind : quint8 {
        server, ///< the token service said no; `message` is for the user
        notConfigured, ///< this installation knows no account service
        network, ///< no answer came
        unreadable, ///< an answer came that is not one
        noBrowser, ///< the login page could not be opened
        superseded, ///< another sign-in was started
        unfinished, ///< the login page came back without a session, or that was ended meanwhile
        otherAccount, ///< the token service names another account than the login page did
        cancelled, ///< the user gave up waiting: not to be shown
    };
    Kind kind = Kind::server;
    QString message = {}; ///< of server: as it came, so that it may repeat what was sent
    int status = 0; ///< of server: of HTTP
    HttpError::Kind network = HttpError::Kind::other; ///< of network
    friend bool operator==(const AuthError &, const AuthError &) = default;

    /// Whether the session itself was refused, rather than this one request for a moment.
    [[nodiscard]] bool endsSession() const
    {
        return kind == Kind::otherAccount
            || (kind == Kind::server && status >= 400 && status <= 499 && status != 429);
    }
};

/// For the user, in the language of the moment.
[[nodiscard]] QString describe(const AuthError &error, const BilingualText &texts);

/// "server said TOKEN_EXPIRED", "timed out" and the like, for a log. Of a server's message only a
/// code or a status is repeated.
[[nodiscard]] QString summary(const AuthError &error);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthError.h"
#include "platform/Result.h"
#include <QObject>
#include <functional>
#include <optional>

namespace vellumo {

class HttpSession;

/// What the token service gives for a refresh token.
struct AccountTokens {
    QString idToken;
    QString refreshToken; ///< replaces the one that was sent
    double lifetime = 0; ///< of the ID token, in seconds; at most a day
    std::optional<QString> uid; ///< of the account, if the answer has it
    std::optional<QString> email; ///< likewise; empty when the account has none
};

/// Client of the token service, which exchanges a refresh token for an ID token. It keeps no token.
///
/// The exchange is the `refresh_token` grant of OAuth 2.0 (RFC 6749, section 6), with the names and
/// the errors of the Firebase documentation ("Exchange a refresh token for an ID token"). The
/// account is read from the claims of the ID token (OpenID Connect Core, section 2), whose
/// signature is not checked, since it comes from the service itself over TLS.
///
/// Main thread only. Nothing is retried. An error of the service is returned with its status and
/// its message, a failed request with its reason, and an answer without tokens, or with those of
/// two accounts, as unreadable. Without FIREBASE_API_KEY nothing is sent.
class TokenService : public QObject {
    Q_OBJECT

public:
    /// Returns a configuration value, trimmed; absent when it is blank.
    using Lookup = std::function<std::optional<QString>(const QString &key)>;
    using Completion = std::function<void(const Result<AccountTokens, AuthError> &)>;

    /// The session must outlive this object. FIREBASE_API_KEY and VELLUMO_SECURETOKEN_URL are
    /// looked up at each request.
    TokenService(HttpSession &session, Lookup lookup, QObject *parent = nullptr);

    /// The completion runs once, never before the call returns and never after this object is
    /// destroyed.
    void request(const QString &refreshToken, Completion completion);

private:
    HttpSession &session_;
    Lookup lookup_;
};

} // namespace vellumo

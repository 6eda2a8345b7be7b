// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/TokenService.h"

#include "settings/ConfigurationKeys.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <chrono>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto requestTimeout = 60s;
constexpr qint64 answerLimit = qint64{256} * 1024;
constexpr double defaultLifetime = 3600;
constexpr double maxLifetime = 24 * 3600;

const QString defaultTokenHost = u"https://securetoken.googleapis.com"_s;

HttpRequest refreshRequest(const QString &host, const QString &key, const QString &refreshToken)
{
    // Unreserved characters are sent unescaped.
    const QByteArray unchanged = "/:~!*'()@,$?";
    HttpRequest request;
    request.method = "POST";
    request.url = QUrl::fromEncoded((host.endsWith(u'/') ? host.chopped(1) : host).toUtf8()
                                        + "/v1/token?key=" + QUrl::toPercentEncoding(key),
                                    QUrl::StrictMode);
    request.headers = {{"Content-Type", "application/x-www-form-urlencoded"}};
    request.body = "grant_type=refresh_token&refresh_token="
        + QUrl::toPercentEncoding(refreshToken, unchanged);
    request.timeout = requestTimeout;
    request.bodyLimit = answerLimit;
    return request;
}

std::optional<AuthError> errorOf(const Result<HttpResponse, HttpError> &answer)
{
    if (!answer.isOk()) {
        return AuthError{.kind = AuthError::Kind::Network, .network = answer.error().kind};
    }
    const HttpResponse &response = answer.value();
    if (response.status >= 200 && response.status <= 299) {
        return std::nullopt;
    }
    const QJsonValue message =
        QJsonDocument::fromJson(response.body)[u"error"_s].toObject().value(u"message"_s);
    return AuthError{.message = message.isString() ? message.toString()
                                                   : u"HTTP %1"_s.arg(response.status),
                     .status = response.status};
}

std::optional<QString> textIn(const QJsonValue &value)
{
    const QString text = value.toString();
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

/// Returns the claims of an ID token; empty when they cannot be decoded. The signature is not
/// checked, since the token was received from the service itself over TLS.
QJsonObject claimsOf(const QString &idToken)
{
    const QStringList parts = idToken.split(u'.');
    if (parts.size() != 3) {
        return {};
    }
    return QJsonDocument::fromJson(
               QByteArray::fromBase64(parts[1].toLatin1(), QByteArray::Base64UrlEncoding))
        .object();
}

double lifetimeOf(const QString &text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    return isNumber && std::isfinite(seconds) ? std::min(seconds, maxLifetime) : defaultLifetime;
}

Result<AccountTokens, AuthError> tokensIn(const Result<HttpResponse, HttpError> &answer)
{
    if (const auto error = errorOf(answer)) {
        return *error;
    }
    const QJsonDocument reply = QJsonDocument::fromJson(answer.value().body);
    const QJsonValue lifetime = reply[u"expires_in"_s];
    AccountTokens tokens{reply[u"id_token"_s].toString(), reply[u"refresh_token"_s].toString(),
                         lifetimeOf(lifetime.toString()), textIn(reply[u"user_id"_s]),
                         std::nullopt};
    const QJsonObject claims = claimsOf(tokens.idToken);
    if (!claims.isEmpty()) {
        const auto subject = textIn(claims[u"sub"_s]);
        const bool isOneAccount = !tokens.uid || !subject || tokens.uid == subject;
        if (!isOneAccount) {
            return AuthError{.kind = AuthError::Kind::Unreadable};
        }
        tokens.uid = subject ? subject : tokens.uid;
        tokens.email = claims[u"email"_s].toString();
    }
    if (tokens.idToken.isEmpty() || tokens.refreshToken.isEmpty() || !lifetime.isString()) {
        return AuthError{.kind = AuthError::Kind::Unreadable};
    }
    return tokens;
}

} // namespace

TokenService::TokenService(HttpSession &session, Lookup lookup, QObject *parent)
    : QObject(parent)
    , session_(session)
    , lookup_(std::move(lookup))
{
}

void TokenService::request(const QString &refreshToken, Completion completion)
{
    const auto key = lookup_(configuration::firebaseKey);
    if (!key) {
        QMetaObject::invokeMethod(
            this,
            [completion = std::move(completion)] {
                completion(AuthError{.kind = AuthError::Kind::notConfigured});
            },
            Qt::QueuedConnection);
        return;
    }
    const QString host = lookup_(configuration::secureTokenUrl).value_or(defaultTokenHost);
    session_.send(
        refreshRequest(host, *key, refreshToken), this,
        [completion = std::move(completion)](const auto &answer) { completion(tokensIn(answer)); });
}

} // namespace vellumo

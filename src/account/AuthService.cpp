// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/AuthService.h"

#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "platform/Clock.h"
#include "ui/BilingualText.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QPointer>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto keychainPatience = 500ms;
constexpr auto requestTimeout = 60s;
constexpr qint64 answerLimit = qint64{256} * 1024;
constexpr double margin = 60; // seconds for which a token that is handed out must still be valid
constexpr double defaultLifetime = 3600;
constexpr double longestLifetime = 24 * 3600;
constexpr double distantPast = -std::numeric_limits<double>::infinity();

const QString defaultTokenHost = u"https://securetoken.googleapis.com"_s;

const QString refreshTokenAccount = u"refreshToken"_s;
const QString uidAccount = u"uid"_s;
const QString emailAccount = u"email"_s;
const std::array accounts{refreshTokenAccount, uidAccount, emailAccount};

HttpRequest refreshRequest(const QString &host, const QString &key, const QString &refreshToken)
{
    // What a form reads as itself is sent as it is.
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
        return AuthError{.kind = AuthError::Kind::network, .network = answer.error().kind};
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

double lifetimeOf(const QString &text)
{
    bool isNumber = false;
    const double seconds = text.toDouble(&isNumber);
    return isNumber && std::isfinite(seconds) ? std::min(seconds, longestLifetime)
                                              : defaultLifetime;
}

} // namespace

AuthService::AuthService(Collaborators collaborators, QObject *parent)
    : QObject(parent)
    , with_(std::move(collaborators))
    , idTokenExpiry_(distantPast)
    , idTokenObtained_(distantPast)
{
    with_.keychain.onReadable(this, [this] { restore(); });
    with_.clock.after(keychainPatience, this, [this] { settle(); });
    restore();
}

void AuthService::restore()
{
    const auto found = std::make_shared<Parameters>();
    const auto missing = std::make_shared<size_t>(accounts.size());
    for (const QString &account : accounts) {
        const auto store = [this, account, found, missing,
                            session = sessionNumber_](const std::optional<QString> &text) {
            if (text) {
                found->insert(account, *text);
            }
            // What the user has done meanwhile counts.
            if (--*missing == 0 && session == sessionNumber_) {
                adoptRestored(*found);
            }
        };
        with_.keychain.get(account, this, store);
    }
}

void AuthService::adoptRestored(const Parameters &items)
{
    const QString refreshToken = items.value(refreshTokenAccount);
    const QString uid = items.value(uidAccount);
    const bool isSession = sessionNumber_ == 0 && !refreshToken.isEmpty() && !uid.isEmpty()
        && items.contains(emailAccount);
    if (isSession) {
        startSession(refreshToken, {uid, items.value(emailAccount)});
    }
    settle();
    if (isSession && onRestored) {
        onRestored();
    }
}

void AuthService::settle()
{
    isSettled_ = true;
    const auto waiting = std::exchange(waiting_, {});
    for (const auto &action : waiting) {
        action();
    }
}

void AuthService::whenRestored(QObject *context, std::function<void()> action)
{
    const auto run = [context = QPointer<QObject>(context), action = std::move(action)] {
        if (context) {
            action();
        }
    };
    if (isSettled_) {
        QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
    } else {
        waiting_.append(run);
    }
}

void AuthService::startSession(const QString &refreshToken, const User &user)
{
    ++sessionNumber_;
    refreshToken_ = refreshToken;
    forgetIDToken();
    setUser(user);
}

void AuthService::setUser(const std::optional<User> &user)
{
    if (user_ != user) {
        user_ = user;
        Q_EMIT userChanged();
    }
}

void AuthService::forgetIDToken()
{
    cachedIDToken_.reset();
    idTokenExpiry_ = distantPast;
}

void AuthService::signInWithGoogle()
{
    signInWithGoogle(this, [this](const std::optional<AuthError> &error) {
        if (error) {
            Q_EMIT signInFailed(describe(*error, with_.texts));
        }
    });
}

void AuthService::openSignInPageAgain()
{
    with_.browser.openPageAgain();
}

void AuthService::signInWithGoogle(QObject *context, SignInCompletion completion)
{
    const auto complete = [context = QPointer<QObject>(context),
                           completion = std::move(completion)](const auto &error) {
        if (context) {
            completion(error);
        }
    };
    if (!with_.lookup(u"FIREBASE_API_KEY"_s)) {
        QMetaObject::invokeMethod(
            this, [complete] { complete(AuthError{.kind = AuthError::Kind::notConfigured}); },
            Qt::QueuedConnection);
        return;
    }
    if (++signIns_ == 1) {
        Q_EMIT isWorkingChanged();
    }
    with_.browser.run(this, [this, complete](const Result<Parameters, AuthError> &result) {
        if (result.isOk()) {
            completeSignIn(result.value(), complete);
        } else {
            endSignIn(result.error(), complete);
        }
    });
}

void AuthService::completeSignIn(const Parameters &parameters, const SignInCompletion &completion)
{
    const QString refreshToken = parameters.value(u"refreshToken"_s);
    const User user{parameters.value(u"uid"_s), parameters.value(u"email"_s)};
    if (refreshToken.isEmpty() || user.uid.isEmpty()) {
        endSignIn(AuthError{.kind = AuthError::Kind::unfinished}, completion);
        return;
    }
    with_.keychain.set(refreshToken, refreshTokenAccount);
    with_.keychain.set(user.uid, uidAccount);
    with_.keychain.set(user.email, emailAccount);
    with_.keychain.unlock();
    startSession(refreshToken, user);
    refreshIDToken([this, completion, session = sessionNumber_](const auto &error) {
        endSignIn(session == sessionNumber_ ? error
                                            : AuthError{.kind = AuthError::Kind::unfinished},
                  completion);
    });
}

void AuthService::endSignIn(const std::optional<AuthError> &error,
                            const SignInCompletion &completion)
{
    if (--signIns_ == 0) {
        Q_EMIT isWorkingChanged();
    }
    if (!error && onSignedIn) {
        onSignedIn();
    }
    completion(error);
}

void AuthService::signOut()
{
    ++sessionNumber_;
    refreshToken_.reset();
    forgetIDToken();
    for (const QString &account : accounts) {
        with_.keychain.remove(account);
    }
    with_.keychain.unlock();
    setUser(std::nullopt);
}

void AuthService::idToken(QObject *context, IdTokenCompletion completion)
{
    whenRestored(context,
                 [this, context = QPointer<QObject>(context), completion = std::move(completion)] {
                     provideIDToken(context, completion);
                 });
}

void AuthService::provideIDToken(const QPointer<QObject> &context,
                                 const IdTokenCompletion &completion)
{
    if (!refreshToken_ || isIDTokenFresh()) {
        completion(refreshToken_ ? cachedIDToken_ : std::nullopt);
        return;
    }
    refreshIDToken([this, context, completion, session = sessionNumber_](const auto &error) {
        if (!context) {
            return;
        }
        if (session != sessionNumber_) {
            provideIDToken(context, completion);
        } else if (error) {
            completion(*error);
        } else {
            completion(cachedIDToken_);
        }
    });
}

bool AuthService::isIDTokenFresh() const
{
    const double now = with_.clock.secondsSinceReferenceDate();
    // A clock that was set back says nothing about the token.
    return cachedIDToken_ && now >= idTokenObtained_ && idTokenExpiry_ - now > margin;
}

void AuthService::refreshIDToken(SignInCompletion completion)
{
    const auto key = with_.lookup(u"FIREBASE_API_KEY"_s);
    if (!key) {
        QMetaObject::invokeMethod(
            this,
            [completion = std::move(completion)] {
                completion(AuthError{.kind = AuthError::Kind::notConfigured});
            },
            Qt::QueuedConnection);
        return;
    }
    const QString host = with_.lookup(u"VELLUMO_SECURETOKEN_URL"_s).value_or(defaultTokenHost);
    with_.session.send(
        refreshRequest(host, *key, refreshToken_.value_or(QString())), this,
        [this, completion = std::move(completion), session = sessionNumber_](const auto &answer) {
            completion(session == sessionNumber_ ? applySession(answer) : std::nullopt);
        });
}

std::optional<AuthError> AuthService::applySession(const Result<HttpResponse, HttpError> &answer)
{
    if (auto error = errorOf(answer)) {
        return error;
    }
    const QJsonDocument reply = QJsonDocument::fromJson(answer.value().body);
    const QString idToken = reply[u"id_token"_s].toString();
    const QString refreshToken = reply[u"refresh_token"_s].toString();
    const QJsonValue lifetimeText = reply[u"expires_in"_s];
    if (idToken.isEmpty() || refreshToken.isEmpty() || !lifetimeText.isString()) {
        return AuthError{.kind = AuthError::Kind::unreadable};
    }
    const double lifetime = lifetimeOf(lifetimeText.toString());
    cachedIDToken_ = idToken;
    refreshToken_ = refreshToken;
    idTokenObtained_ = with_.clock.secondsSinceReferenceDate();
    idTokenExpiry_ = idTokenObtained_ + lifetime;
    with_.keychain.set(refreshToken, refreshTokenAccount);
    // Also when the clock is set back a little meanwhile.
    const auto usable = std::chrono::seconds(std::max(0LL, std::llround(lifetime - margin)));
    with_.clock.after(usable, this, [this, number = ++idTokenNumber_] {
        if (number == idTokenNumber_) {
            forgetIDToken();
        }
    });
    return std::nullopt;
}

} // namespace vellumo

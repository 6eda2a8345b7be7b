// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/AuthService.h"

#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "platform/Clock.h"
#include "platform/Wiping.h"
#include "settings/ConfigurationKeys.h"
#include "ui/BilingualText.h"

#include <QPointer>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto keychainTimeout = 500ms;
constexpr double margin = 60; // minimum validity in seconds of a token that is returned
constexpr double distantPast = -std::numeric_limits<double>::infinity();

/// Returns whether the token service's answer names this user, as far as both name one.
bool isAccount(const User &user, const std::optional<QString> &uid,
               const std::optional<QString> &email)
{
    const bool isSameUid = !uid || *uid == user.uid;
    const bool isSameEmail =
        !email || user.email.isEmpty() || email->compare(user.email, Qt::CaseInsensitive) == 0;
    return isSameUid && isSameEmail;
}

} // namespace

AuthService::AuthService(Collaborators collaborators, QObject *parent)
    : QObject(parent)
    , with_(std::move(collaborators))
    , tokens_(with_.session, with_.lookup)
    , stored_(with_.keychain, with_.defaults, [this] { return refreshToken_; })
    , idTokenExpiry_(distantPast)
    , idTokenObtained_(distantPast)
{
    with_.keychain.onReadable(this, [this] { keyringBecameReadable(); });
    with_.clock.after(keychainTimeout, this, [this] { settle(); });
    connect(&with_.texts, &BilingualText::languageChanged, this, &AuthService::problemChanged);
    if (stored_.isSignOutPending()) {
        stored_.remove();
        settle();
    } else {
        restore();
    }
}

void AuthService::keyringBecameReadable()
{
    if (!stored_.isSignOutPending()) {
        restore();
    } else if (user_) {
        stored_.confirm();
    } else {
        stored_.remove();
    }
}

void AuthService::restore()
{
    stored_.read([this, session = sessionNumber_](const auto &contents) {
        // Ignore the result if the user has signed in or out meanwhile.
        if (session == sessionNumber_) {
            adoptRestored(contents);
        }
    });
}

void AuthService::adoptRestored(const std::optional<StoredSession::Contents> &contents)
{
    // A sign-in whose page has returned takes precedence.
    const bool isSession = sessionNumber_ == 0 && !isSignInBack_ && contents;
    if (isSession) {
        cancelSignIn();
        startSession(contents->refreshToken, {contents->uid, contents->email});
    }
    settle();
    if (isSession) {
        Q_EMIT restored();
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
    beginOtherSession(refreshToken);
    setUser(user);
}

void AuthService::endSession()
{
    beginOtherSession(std::nullopt);
    stored_.recordSignOut();
    stored_.remove();
    setUser(std::nullopt);
}

void AuthService::beginOtherSession(const std::optional<QString> &refreshToken)
{
    ++sessionNumber_;
    if (refreshToken_) {
        wipe(*refreshToken_);
    }
    refreshToken_ = refreshToken;
    isUnconfirmed_ = false;
    forgetIDToken();
    setProblem(std::nullopt);
    // Waiting callers try again with the session of that time.
    QMetaObject::invokeMethod(
        this,
        [waiters = std::exchange(refreshWaiters_, {})] {
            for (const auto &waiter : waiters) {
                waiter(std::nullopt);
            }
        },
        Qt::QueuedConnection);
}

void AuthService::setUser(const std::optional<User> &user)
{
    if (user_ != user) {
        user_ = user;
        Q_EMIT userChanged();
    }
}

void AuthService::setProblem(const std::optional<AuthError> &problem)
{
    if (problem_ != problem) {
        problem_ = problem;
        Q_EMIT problemChanged();
    }
}

QString AuthService::problem() const
{
    return problem_ ? describe(*problem_, with_.texts) : QString();
}

void AuthService::storeSession()
{
    // An address that only the login page has named is not stored.
    stored_.store({*refreshToken_, user_->uid, isUnconfirmed_ ? QString() : user_->email});
}

void AuthService::forgetIDToken()
{
    if (cachedIDToken_) {
        wipe(*cachedIDToken_);
    }
    cachedIDToken_.reset();
    idTokenExpiry_ = distantPast;
}

void AuthService::signInWithGoogle()
{
    signInWithGoogle(this, [this](const std::optional<AuthError> &error) {
        if (error && error->kind != AuthError::Kind::Cancelled) {
            Q_EMIT signInFailed(describe(*error, with_.texts));
        }
    });
}

void AuthService::openSignInPageAgain()
{
    with_.browser.openPageAgain();
}

void AuthService::cancelSignIn()
{
    with_.browser.cancel();
    endSignIn(AuthError{.kind = AuthError::Kind::Cancelled});
}

bool AuthService::isConfigured() const
{
    return with_.lookup(configuration::firebaseKey).has_value();
}

void AuthService::signInWithGoogle(QObject *context, SignInCompletion completion)
{
    const auto complete = [context = QPointer<QObject>(context),
                           completion = std::move(completion)](const auto &error) {
        if (context) {
            completion(error);
        }
    };
    if (!isConfigured()) {
        QMetaObject::invokeMethod(
            this, [complete] { complete(AuthError{.kind = AuthError::Kind::notConfigured}); },
            Qt::QueuedConnection);
        return;
    }
    setProblem(std::nullopt);
    const int number = ++signInNumber_;
    isSignInBack_ = false;
    if (const auto older = std::exchange(signIn_, complete)) {
        older(AuthError{.kind = AuthError::Kind::Superseded});
    } else {
        Q_EMIT isWorkingChanged();
    }
    with_.browser.run(this, [this, number](const Result<Parameters, AuthError> &result) {
        if (number != signInNumber_) {
            return;
        }
        if (result.isOk()) {
            completeSignIn(result.value());
        } else {
            endSignIn(result.error());
        }
    });
}

void AuthService::completeSignIn(const Parameters &parameters)
{
    const QString refreshToken = parameters.value(u"refreshToken"_s);
    const User named{parameters.value(u"uid"_s), parameters.value(u"email"_s)};
    if (refreshToken.isEmpty() || named.uid.isEmpty()) {
        endSignIn(AuthError{.kind = AuthError::Kind::Unfinished});
        return;
    }
    isSignInBack_ = true;
    Q_EMIT isWorkingChanged();
    tokens_.request(refreshToken,
                    [this, refreshToken, named, number = signInNumber_](const auto &answer) {
                        if (number == signInNumber_) {
                            takeSignIn(refreshToken, named, answer);
                        }
                    });
}

void AuthService::takeSignIn(const QString &refreshToken, const User &named,
                             const Result<AccountTokens, AuthError> &answer)
{
    if (answer.isOk() && !isAccount(named, answer.value().uid, answer.value().email)) {
        endSignIn(AuthError{.kind = AuthError::Kind::OtherAccount});
        return;
    }
    if (answer.isOk()) {
        startSession(answer.value().refreshToken,
                     {named.uid, answer.value().email.value_or(named.email)});
        keepTokens(answer.value());
    } else {
        startSession(refreshToken, named);
        isUnconfirmed_ = true;
        setProblem(answer.error());
    }
    storeSession();
    with_.keychain.unlock();
    endSignIn(answer.isOk() ? std::nullopt : std::optional(answer.error()));
}

void AuthService::endSignIn(const std::optional<AuthError> &error)
{
    const auto completion = std::exchange(signIn_, nullptr);
    if (!completion) {
        return;
    }
    ++signInNumber_;
    const bool wasBack = std::exchange(isSignInBack_, false);
    Q_EMIT isWorkingChanged();
    if (!error && onSignedIn) {
        onSignedIn();
    }
    completion(error);
    if (error && wasBack && !user_ && !stored_.isSignOutPending()) {
        restore(); // answers of the keyring were ignored during the sign-in
    }
}

void AuthService::signOut()
{
    with_.browser.cancel();
    endSession();
    with_.keychain.unlock();
    endSignIn(AuthError{.kind = AuthError::Kind::Unfinished});
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
        if (error) {
            completion(*error);
        } else if (session != sessionNumber_) {
            provideIDToken(context, completion);
        } else {
            completion(cachedIDToken_);
        }
    });
}

bool AuthService::isIDTokenFresh() const
{
    const double now = with_.clock.secondsSinceReferenceDate();
    // After the clock was set back, the token's age is unknown.
    return cachedIDToken_ && now >= idTokenObtained_ && idTokenExpiry_ - now > margin;
}

void AuthService::refreshIDToken(SignInCompletion completion)
{
    refreshWaiters_.append(std::move(completion));
    if (refreshWaiters_.size() > 1) {
        return;
    }
    tokens_.request(refreshToken_.value_or(QString()),
                    [this, session = sessionNumber_](const auto &answer) {
                        if (session != sessionNumber_) {
                            return;
                        }
                        const auto waiters = std::exchange(refreshWaiters_, {});
                        const auto error = applySession(answer);
                        for (const auto &waiter : waiters) {
                            waiter(error);
                        }
                    });
}

std::optional<AuthError> AuthService::applySession(const Result<AccountTokens, AuthError> &answer)
{
    if (!answer.isOk()) {
        setProblem(answer.error());
        return answer.error();
    }
    const AccountTokens &tokens = answer.value();
    // The address of an account may change, but only after the account is confirmed.
    const User stored{user_->uid, isUnconfirmed_ ? user_->email : QString()};
    if (!isAccount(stored, tokens.uid, tokens.email)) {
        const AuthError error{.kind = AuthError::Kind::OtherAccount};
        endSession();
        setProblem(error);
        return error;
    }
    setProblem(std::nullopt);
    keepTokens(tokens);
    const bool isNews =
        std::exchange(isUnconfirmed_, false) || (tokens.email && *tokens.email != user_->email);
    setUser(User{user_->uid, tokens.email.value_or(user_->email)});
    if (isNews) {
        storeSession();
    } else {
        stored_.renew(*refreshToken_);
    }
    return std::nullopt;
}

void AuthService::keepTokens(const AccountTokens &tokens)
{
    cachedIDToken_ = tokens.idToken;
    refreshToken_ = tokens.refreshToken;
    idTokenObtained_ = with_.clock.secondsSinceReferenceDate();
    idTokenExpiry_ = idTokenObtained_ + tokens.lifetime;
    // A timer, so that it also happens if the clock is set back.
    const auto usable = std::chrono::seconds(std::max(0LL, std::llround(tokens.lifetime - margin)));
    with_.clock.after(usable, this, [this, number = ++idTokenNumber_] {
        if (number == idTokenNumber_) {
            forgetIDToken();
        }
    });
}

} // namespace vellumo

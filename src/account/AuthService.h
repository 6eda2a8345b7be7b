// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/Authenticating.h"
#include "platform/HttpSession.h"
#include <QHash>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class Clock;
class DefaultsStore;
class GoogleOAuth;
class KeychainStore;

/// The user's session: who is signed in, a refresh token kept in the keyring, and a short-lived ID
/// token kept in memory. Its operations go on when the view that asked for them is gone. Main
/// thread only.
class AuthService : public QObject, public Authenticating {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY userChanged)
    Q_PROPERTY(QString email READ email NOTIFY userChanged)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY isWorkingChanged)
    Q_PROPERTY(bool awaitsPage READ awaitsPage NOTIFY isWorkingChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    using User = vellumo::User;
    using AuthError = vellumo::AuthError;

    /// Answers a configuration value, trimmed; absent when it is blank.
    using Lookup = std::function<std::optional<QString>(const QString &key)>;
    /// Nothing when it succeeded.
    using SignInCompletion = std::function<void(const std::optional<AuthError> &)>;

    /// The setting that says, as a boolean, that the session in the keyring has been ended but may
    /// still be there.

    /// All must outlive the service. FIREBASE_API_KEY and VELLUMO_SECURETOKEN_URL are looked up
    /// whenever they are needed.
    struct Collaborators {
        KeychainStore &keychain;
        GoogleOAuth &browser;
        HttpSession &session;
        Clock &clock;
        const BilingualText &texts;
        DefaultsStore &defaults;
        Lookup lookup;
    };

    /// Begins to restore the session from the keyring; or to remove it, if the user has signed out
    /// while the keyring could not be written.
    explicit AuthService(Collaborators collaborators, QObject *parent = nullptr);

    /// Called after a successful sign-in.
    std::function<void()> onSignedIn;

    /// Runs `action` once, when it is known whether there is a session to restore, or half a second
    /// after the start if the keyring takes longer. Never before the call returns, and not when
    /// `context` is destroyed first.
    void whenRestored(QObject *context, std::function<void()> action);

    [[nodiscard]] std::optional<User> user() const override { return user_; }
    [[nodiscard]] bool isSignedIn() const { return user_.has_value(); }
    [[nodiscard]] QString email() const { return user_ ? user_->email : QString(); }
    [[nodiscard]] bool isWorking() const { return static_cast<bool>(signIn_); }
    /// Whether the sign-in that is under way waits for its page to come back.
    [[nodiscard]] bool awaitsPage() const { return isWorking() && !isSignInBack_; }
    /// For the user: why the last ID token could not be had; empty when it could.
    [[nodiscard]] QString problem() const;

    /// Signs in through the browser, which takes as long as the user does; a sign-in that still
    /// waits ends with an error. Whose account it is comes from the token service; a sign-in whose
    /// page named another account is refused. When only the first ID token cannot be had, the
    /// session is kept and the account is checked with the next token. The completion runs once and
    /// never before the call returns; not when `context` is destroyed first.
    void signInWithGoogle(QObject *context, SignInCompletion completion);
    /// For views: a failure arrives as signInFailed().
    Q_INVOKABLE void signInWithGoogle();
    /// For a user who has closed the page that a sign-in waits for.
    Q_INVOKABLE void openSignInPageAgain();
    /// Ends the sign-in that is under way, if any, as cancelled: what the page sends back later is
    /// ignored.
    Q_INVOKABLE void cancelSignIn();
    Q_INVOKABLE void signOut();

    void idToken(QObject *context, IdTokenCompletion completion) override;

Q_SIGNALS:
    /// A session of an earlier run has been restored: soon after the start, or when a keyring that
    /// was closed or slow has become readable.
    void restored();
    void userChanged();
    void isWorkingChanged();
    void problemChanged();
    /// With the text for the user.
    void signInFailed(const QString &message);

private:
    using Parameters = QHash<QString, QString>;

    /// What the token service answers.
    struct Tokens {
        QString idToken;
        QString refreshToken;
        double lifetime = 0; ///< seconds
        std::optional<QString> uid; ///< of the account, if the answer says it
        std::optional<QString> email; ///< likewise; empty when the account has none
    };
    using TokensCompletion = std::function<void(const Result<Tokens, AuthError> &)>;

    void keyringBecameReadable();
    void restore();
    void adoptRestored(const Parameters &items);
    void settle();

    /// The tokens of one session never serve another.
    void startSession(const QString &refreshToken, const User &user);
    void endSession();
    void beginOtherSession(const std::optional<QString> &refreshToken);
    void setUser(const std::optional<User> &user);
    void setProblem(const std::optional<AuthError> &problem);
    void forgetIDToken();

    void storeSession();
    void removeStoredSession();
    /// Forgets that the user has signed out, once the keyring has nothing of that session.
    void confirmStoredSession();
    [[nodiscard]] bool isSignOutOwed() const;

    void completeSignIn(const Parameters &parameters);
    void takeSignIn(const QString &refreshToken, const User &named,
                    const Result<Tokens, AuthError> &answer);
    void endSignIn(const std::optional<AuthError> &error);

    void provideIDToken(const QPointer<QObject> &context, const IdTokenCompletion &completion);
    [[nodiscard]] bool isIDTokenFresh() const;
    /// One request for all who ask meanwhile.
    void refreshIDToken(SignInCompletion completion);
    /// The completion runs once and never before the call returns.
    void requestTokens(const QString &refreshToken, TokensCompletion completion);
    [[nodiscard]] static Result<Tokens, AuthError>
    tokensIn(const Result<HttpResponse, HttpError> &answer);
    [[nodiscard]] std::optional<AuthError> applySession(const Result<Tokens, AuthError> &answer);
    void keepTokens(const Tokens &tokens);

    Collaborators with_;
    std::optional<User> user_;
    SignInCompletion signIn_; ///< of the one that is under way
    int signInNumber_ = 0; ///< changes when one begins or ends
    bool isSignInBack_ = false; ///< its page has come back
    bool isUnconfirmed_ = false; ///< the token service has not said yet whose account it is
    std::optional<AuthError> problem_;
    std::optional<QString> refreshToken_;
    std::optional<QString> cachedIDToken_;
    double idTokenExpiry_; ///< seconds since the reference date
    double idTokenObtained_; ///< likewise

    int sessionNumber_ = 0; ///< changes with every sign-in and sign-out
    int idTokenNumber_ = 0;
    QList<SignInCompletion> refreshWaiters_; ///< of the refresh that is under way
    bool isSettled_ = false;
    QList<std::function<void()>> waiting_; ///< until settled
};

} // namespace vellumo

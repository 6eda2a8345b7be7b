// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/Authenticating.h"
#include "account/StoredSession.h"
#include "account/TokenService.h"
#include <QHash>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class Clock;
class DefaultsStore;
class GoogleOAuth;
class KeychainStore;

/// The user's session: the account, a refresh token in the keyring, and a short-lived ID token in
/// memory. Operations continue when the view that started them is destroyed. Main thread only.
class AuthService : public QObject, public Authenticating {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isConfigured READ isConfigured CONSTANT)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY userChanged)
    Q_PROPERTY(QString email READ email NOTIFY userChanged)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY isWorkingChanged)
    Q_PROPERTY(bool awaitsPage READ awaitsPage NOTIFY isWorkingChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    using User = vellumo::User;
    using AuthError = vellumo::AuthError;

    using Lookup = TokenService::Lookup;
    /// Called with the error; absent on success.
    using SignInCompletion = std::function<void(const std::optional<AuthError> &)>;

    /// All must outlive the service. FIREBASE_API_KEY and VELLUMO_SECURETOKEN_URL are looked up at
    /// each use.
    struct Collaborators {
        KeychainStore &keychain;
        GoogleOAuth &browser;
        HttpSession &session;
        Clock &clock;
        const BilingualText &texts;
        DefaultsStore &defaults;
        Lookup lookup;
    };

    /// Starts to restore the session from the keyring, or to remove it if the user has signed out
    /// while the keyring could not be written.
    explicit AuthService(Collaborators collaborators, QObject *parent = nullptr);

    /// Called after a successful sign-in.
    std::function<void()> onSignedIn;

    /// Runs `action` once, when it is known whether there is a session to restore, or half a second
    /// after the start if the keyring takes longer. Runs it never before the call returns and never
    /// after `context` is destroyed.
    void whenRestored(QObject *context, std::function<void()> action);

    /// Returns whether an account service is configured. Without one nobody can sign in.
    [[nodiscard]] bool isConfigured() const;

    [[nodiscard]] std::optional<User> user() const override { return user_; }
    [[nodiscard]] bool isSignedIn() const { return user_.has_value(); }
    [[nodiscard]] QString email() const { return user_ ? user_->email : QString(); }
    [[nodiscard]] bool isWorking() const { return static_cast<bool>(signIn_); }
    /// Returns whether the running sign-in waits for the login page.
    [[nodiscard]] bool awaitsPage() const { return isWorking() && !isSignInBack_; }
    /// Returns the text for the user why the last ID token could not be obtained; empty on success.
    [[nodiscard]] QString problem() const;

    /// Signs in through the browser, without a timeout. A pending sign-in ends with an error. The
    /// account is the one that the token service names; a sign-in whose page named another one is
    /// refused. If only the first ID token cannot be obtained, the session is kept and the account
    /// is checked with the next token. The completion runs once, never before the call returns and
    /// never after `context` is destroyed.
    void signInWithGoogle(QObject *context, SignInCompletion completion);
    /// For views; a failure is reported by signInFailed().
    Q_INVOKABLE void signInWithGoogle();
    /// Opens the login page of a pending sign-in once more, in case the user has closed it.
    Q_INVOKABLE void openSignInPageAgain();
    /// Ends a pending sign-in as cancelled. A later callback of the page is ignored.
    Q_INVOKABLE void cancelSignIn();
    Q_INVOKABLE void signOut();

    void idToken(QObject *context, IdTokenCompletion completion) override;

Q_SIGNALS:
    /// Emitted when a session of an earlier run was restored: soon after the start, or when a
    /// closed or slow keyring has become readable.
    void restored();
    void userChanged();
    void isWorkingChanged();
    void problemChanged();
    /// Emitted when a sign-in of a view fails; `message` is the text for the user.
    void signInFailed(const QString &message);

private:
    using Parameters = QHash<QString, QString>;

    void keyringBecameReadable();
    void restore();
    void adoptRestored(const std::optional<StoredSession::Contents> &contents);
    void settle();

    /// Tokens of one session are never used for another.
    void startSession(const QString &refreshToken, const User &user);
    void endSession();
    void beginOtherSession(const std::optional<QString> &refreshToken);
    void setUser(const std::optional<User> &user);
    void setProblem(const std::optional<AuthError> &problem);
    void forgetIDToken();

    void storeSession();

    void completeSignIn(const Parameters &parameters);
    void takeSignIn(const QString &refreshToken, const User &named,
                    const Result<AccountTokens, AuthError> &answer);
    void endSignIn(const std::optional<AuthError> &error);

    void provideIDToken(const QPointer<QObject> &context, const IdTokenCompletion &completion);
    [[nodiscard]] bool isIDTokenFresh() const;
    /// Callers during a refresh share its request.
    void refreshIDToken(SignInCompletion completion);
    [[nodiscard]] std::optional<AuthError>
    applySession(const Result<AccountTokens, AuthError> &answer);
    void keepTokens(const AccountTokens &tokens);

    Collaborators with_;
    TokenService tokens_;
    StoredSession stored_;
    std::optional<User> user_;
    SignInCompletion signIn_; ///< completion of the pending sign-in
    int signInNumber_ = 0; ///< changes when a sign-in begins or ends
    bool isSignInBack_ = false; ///< its page has returned
    bool isUnconfirmed_ = false; ///< the token service has not confirmed the account yet
    std::optional<AuthError> problem_;
    std::optional<QString> refreshToken_;
    std::optional<QString> cachedIDToken_;
    double idTokenExpiry_; ///< seconds since the reference date
    double idTokenObtained_; ///< likewise

    int sessionNumber_ = 0; ///< changes with every sign-in and sign-out
    int idTokenNumber_ = 0;
    QList<SignInCompletion> refreshWaiters_; ///< callers of the running refresh
    bool isSettled_ = false;
    QList<std::function<void()>> waiting_; ///< until settled
};

} // namespace vellumo

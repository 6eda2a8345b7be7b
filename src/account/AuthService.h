// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/Authenticating.h"
#include "platform/HttpSession.h"
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class Clock;
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

public:
    using User = vellumo::User;
    using AuthError = vellumo::AuthError;

    /// Answers a configuration value, trimmed; absent when it is blank.
    using Lookup = std::function<std::optional<QString>(const QString &key)>;
    /// Nothing when it succeeded.
    using SignInCompletion = std::function<void(const std::optional<AuthError> &)>;

    /// All must outlive the service. FIREBASE_API_KEY and VELLUMO_SECURETOKEN_URL are looked up
    /// whenever they are needed.
    struct Collaborators {
        KeychainStore &keychain;
        GoogleOAuth &browser;
        HttpSession &session;
        Clock &clock;
        const BilingualText &texts;
        Lookup lookup;
    };

    /// Begins to restore the session from the keyring.
    explicit AuthService(Collaborators collaborators, QObject *parent = nullptr);

    /// Called after a successful sign-in.
    std::function<void()> onSignedIn;
    /// Called when a session of an earlier run has been restored: soon after the start, or when a
    /// keyring that was closed or slow is readable at last.
    std::function<void()> onRestored;

    /// Runs `action` once, when it is known whether there is a session to restore, or half a second
    /// after the start if the keyring takes longer. Never before the call returns, and not when
    /// `context` is destroyed first.
    void whenRestored(QObject *context, std::function<void()> action);

    [[nodiscard]] std::optional<User> user() const override { return user_; }
    [[nodiscard]] bool isSignedIn() const { return user_.has_value(); }
    [[nodiscard]] QString email() const { return user_ ? user_->email : QString(); }
    [[nodiscard]] bool isWorking() const { return signIns_ > 0; }

    /// Signs in through the browser, which takes as long as the user does; a sign-in that still
    /// waits ends with an error. When only the first ID token cannot be had, the session is kept.
    /// The completion runs once and never before the call returns; not when `context` is destroyed
    /// first.
    void signInWithGoogle(QObject *context, SignInCompletion completion);
    /// For views: a failure arrives as signInFailed().
    Q_INVOKABLE void signInWithGoogle();
    /// For somebody who has closed the page that a sign-in waits for.
    Q_INVOKABLE void openSignInPageAgain();
    Q_INVOKABLE void signOut();

    void idToken(QObject *context, IdTokenCompletion completion) override;

Q_SIGNALS:
    void userChanged();
    void isWorkingChanged();
    /// With the text for the user.
    void signInFailed(const QString &message);

private:
    using Parameters = QHash<QString, QString>;

    void restore();
    void adoptRestored(const Parameters &items);
    void settle();

    /// The tokens of one session never serve another.
    void startSession(const QString &refreshToken, const User &user);
    void setUser(const std::optional<User> &user);
    void forgetIDToken();

    void completeSignIn(const Parameters &parameters, const SignInCompletion &completion);
    void endSignIn(const std::optional<AuthError> &error, const SignInCompletion &completion);

    void provideIDToken(const QPointer<QObject> &context, const IdTokenCompletion &completion);
    [[nodiscard]] bool isIDTokenFresh() const;
    /// Applied only to the session it was begun for.
    void refreshIDToken(SignInCompletion completion);
    [[nodiscard]] std::optional<AuthError>
    applySession(const Result<HttpResponse, HttpError> &answer);

    Collaborators with_;
    std::optional<User> user_;
    int signIns_ = 0; ///< that have not ended
    std::optional<QString> refreshToken_;
    std::optional<QString> cachedIDToken_;
    double idTokenExpiry_; ///< seconds since the reference date
    double idTokenObtained_; ///< likewise

    int sessionNumber_ = 0; ///< changes with every sign-in and sign-out
    int idTokenNumber_ = 0;
    bool isSettled_ = false;
    QList<std::function<void()>> waiting_; ///< until settled
};

} // namespace vellumo

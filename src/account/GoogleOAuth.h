// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthError.h"
#include "platform/Result.h"
#include <QHash>
#include <QObject>
#include <QUrl>
#include <functional>

namespace vellumo {

class Workspace;

/// The browser's part of signing in: opens the web site's login page, which returns through a URL
/// of the program's own scheme. The user's password never reaches this program.
class GoogleOAuth {
public:
    using Parameters = QHash<QString, QString>;
    using Completion = std::function<void(const Result<Parameters, AuthError> &)>;

    /// `site` is the web site's base address. The workspace must outlive this object.
    GoogleOAuth(Workspace &workspace, const QString &site);

    /// Opens the login page in the browser and waits for its callback, without limit. A
    /// pending sign-in completes with an error. The completion runs once, on the main thread and
    /// never before the call returns; not when `context` is destroyed first.
    void run(QObject *context, Completion completion);

    /// Opens the login page of a pending sign-in once more, in case it was closed.
    void openPageAgain();

    /// Completes a pending sign-in as cancelled. Later callbacks are ignored.
    void cancel();

    /// Completes the pending sign-in with the parameters of the URL, or as unfinished when the URL
    /// is not one of the login page's. Does nothing when none is pending. The URL is untrusted; its
    /// values are not checked here.
    void handleCallback(const QString &url);

    /// Returns whether the URL has the scheme, authority and path of the login page's callback. It
    /// need not be well-formed otherwise.
    [[nodiscard]] static bool isCallback(const QString &url);

    /// Returns the query items of a URL: the last one of each name, and none without a value.
    [[nodiscard]] static Parameters parameters(const QString &url);

private:
    void finish(const Result<Parameters, AuthError> &result);

    Workspace &workspace_;
    QUrl loginPage_;
    Completion continuation_; ///< of the pending sign-in
};

} // namespace vellumo

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

/// The browser's half of signing in: the web site's login page is opened, and comes back through an
/// address of the program's own scheme. The user's password is never seen here.
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

    /// Opens the login page once more for a sign-in that waits, of which the page may be closed.
    void openPageAgain();

    /// Ends the wait: the sign-in that waits, if any, completes as cancelled, and what comes back
    /// later is ignored.
    void cancel();

    /// Completes the sign-in that waits with what the address carries, or as unfinished when the
    /// address is not one of the login page's. Ignored when none waits. The address is whatever
    /// someone sent; its values are not checked here.
    void handleCallback(const QString &url);

    /// Whether the address has the scheme, the authority and the path that the login page comes
    /// back with. It need not be well-formed otherwise.
    [[nodiscard]] static bool isCallback(const QString &url);

    /// What the query of an address says: of items with the same name the last, and none without a
    /// value.
    [[nodiscard]] static Parameters parameters(const QString &url);

private:
    void finish(const Result<Parameters, AuthError> &result);

    Workspace &workspace_;
    QUrl loginPage_;
    Completion continuation_; ///< of the sign-in that waits
};

} // namespace vellumo

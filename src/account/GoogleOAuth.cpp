// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/GoogleOAuth.h"

#include "platform/Diagnostics.h"
#include "platform/Workspace.h"

#include <QPointer>
#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr QStringView scheme = u"vellumo:";

/// Authority and path that the login page uses between scheme and query.
constexpr std::array callbackPlaces{
    QStringView(u""),        QStringView(u"//auth"),          QStringView(u"//signed-in"),
    QStringView(u"//auth/"), QStringView(u"//auth/callback"), QStringView(u"//signed-in/")};

QString decoded(QStringView text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

} // namespace

GoogleOAuth::GoogleOAuth(Workspace &workspace, const QString &site)
    : workspace_(workspace)
    , loginPage_(site + (site.endsWith(u'/') ? u"login"_s : u"/login"_s), QUrl::StrictMode)
{
}

void GoogleOAuth::run(QObject *context, Completion completion)
{
    finish(AuthError{.kind = AuthError::Kind::Superseded});
    continuation_ = [context = QPointer<QObject>(context),
                     completion = std::move(completion)](const auto &result) {
        if (context) {
            QMetaObject::invokeMethod(
                context, [completion, result] { completion(result); }, Qt::QueuedConnection);
        }
    };
    if (!workspace_.openUrl(loginPage_)) {
        finish(AuthError{.kind = AuthError::Kind::NoBrowser});
    }
}

void GoogleOAuth::openPageAgain()
{
    if (continuation_) {
        workspace_.openUrl(loginPage_);
    }
}

void GoogleOAuth::cancel()
{
    finish(AuthError{.kind = AuthError::Kind::Cancelled});
}

void GoogleOAuth::handleCallback(const QString &url)
{
    if (!continuation_) {
        printDiagnostic(u"ignored a sign-in callback that no sign-in waits for"_s);
        return;
    }
    if (isCallback(url)) {
        finish(parameters(url));
    } else {
        printDiagnostic(u"an address was opened that the login page does not come back with"_s);
        finish(AuthError{.kind = AuthError::Kind::Unfinished});
    }
}

void GoogleOAuth::finish(const Result<Parameters, AuthError> &result)
{
    if (const auto continuation = std::exchange(continuation_, nullptr)) {
        continuation(result);
    }
}

bool GoogleOAuth::isCallback(const QString &url)
{
    const QStringView address = QStringView(url).left(url.indexOf(u'#'));
    if (!address.startsWith(scheme, Qt::CaseInsensitive)) {
        return false;
    }
    const QStringView place = address.left(address.indexOf(u'?')).sliced(scheme.size());
    return std::ranges::any_of(callbackPlaces, [place](QStringView known) {
        return place.compare(known, Qt::CaseInsensitive) == 0;
    });
}

GoogleOAuth::Parameters GoogleOAuth::parameters(const QString &url)
{
    const QStringView address = QStringView(url).left(url.indexOf(u'#'));
    const qsizetype mark = address.indexOf(u'?');
    Parameters found;
    if (mark < 0) {
        return found;
    }
    for (const QStringView item : address.sliced(mark + 1).split(u'&')) {
        const qsizetype sign = item.indexOf(u'=');
        if (sign >= 0) {
            found.insert(decoded(item.left(sign)), decoded(item.sliced(sign + 1)));
        }
    }
    return found;
}

} // namespace vellumo

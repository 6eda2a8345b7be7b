// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/GoogleOAuth.h"

#include "platform/Diagnostics.h"
#include "platform/Workspace.h"

#include <QPointer>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

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
    finish(AuthError{.kind = AuthError::Kind::superseded});
    continuation_ = [context = QPointer<QObject>(context),
                     completion = std::move(completion)](const auto &result) {
        if (context) {
            QMetaObject::invokeMethod(
                context, [completion, result] { completion(result); }, Qt::QueuedConnection);
        }
    };
    if (!workspace_.openUrl(loginPage_)) {
        finish(AuthError{.kind = AuthError::Kind::noBrowser});
    }
}

void GoogleOAuth::openPageAgain()
{
    if (continuation_) {
        workspace_.openUrl(loginPage_);
    }
}

void GoogleOAuth::handleCallback(const QString &url)
{
    if (!continuation_) {
        printDiagnostic(u"a sign-in came back that nobody waits for"_s);
        return;
    }
    finish(parameters(url));
}

void GoogleOAuth::finish(const Result<Parameters, AuthError> &result)
{
    if (const auto continuation = std::exchange(continuation_, nullptr)) {
        continuation(result);
    }
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

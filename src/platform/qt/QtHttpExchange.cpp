// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/QtHttpExchange.h"

#include "platform/WebAddress.h"
#include "platform/qt/PostBody.h"
#include "platform/qt/ProxyLookup.h"
#include "platform/qt/RequestRules.h"

#include <QCoreApplication>
#include <QMetaEnum>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int maxRedirects = 5;
constexpr qint64 readAhead = qint64{256} * 1024; // maximum number of unread bytes

HttpError::Kind kindOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
        return HttpError::Kind::Refused;
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ProxyNotFoundError:
        return HttpError::Kind::CannotResolve;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return HttpError::Kind::TimedOut;
    case QNetworkReply::SslHandshakeFailedError:
        return HttpError::Kind::Untrusted;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ContentReSendError: // see PostBody
        return HttpError::Kind::CutShort;
    default:
        return HttpError::Kind::Other;
    }
}

QNetworkRequest networkRequest(const HttpRequest &request)
{
    QNetworkRequest made(request.url);
    made.setHeader(QNetworkRequest::UserAgentHeader,
                   QString(u"vellumo/"_s + QCoreApplication::applicationVersion()));
    for (const auto &[name, value] : request.headers) {
        made.setRawHeader(name, value);
    }
    // Aborting a request on a dead HTTP/2 connection keeps the connection for the next request,
    // which then hangs as long. Aborting one on HTTP/1.1 closes its connection.
    made.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // The limit of the body bounds decompression, without refusing data that merely compresses
    // well.
    made.setDecompressedSafetyCheckThreshold(-1);
    made.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                      QNetworkRequest::ManualRedirectPolicy);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute}) {
        made.setAttribute(attribute, QNetworkRequest::Manual);
    }
    return made;
}

} // namespace

QtHttpExchange::QtHttpExchange(QNetworkAccessManager &manager, ProxyLookup &proxies,
                               const HttpRequest &request, Repetition repetition, QObject *context,
                               HttpCompletion completion)
    : QObject(&manager)
    , manager_(manager)
    , proxies_(proxies)
    , request_(request)
    , repetition_(repetition)
    , context_(context)
    , completion_(std::move(completion))
{
    connect(context, &QObject::destroyed, this, &QtHttpExchange::abandon);

    silence_.setSingleShot(true);
    silence_.callOnTimeout(this, [this] {
        Q_EMIT fellSilent();
        fail(HttpError::Kind::TimedOut, u"silence"_s);
    });
    silence_.start(request.timeout);
    total_.setSingleShot(true);
    total_.callOnTimeout(this, [this] { fail(HttpError::Kind::TimedOut, u"too slow"_s); });
    total_.start(request.totalTimeout);

    resolveProxy();
}

void QtHttpExchange::resolveProxy()
{
    proxies_.find(request_.url, this, [this] { start(); });
}

void QtHttpExchange::start()
{
    if (!completion_) {
        return; // cancelled before it started
    }
    const QNetworkRequest made = networkRequest(request_);
    if (request_.method == "POST") {
        auto *body = new PostBody(request_.body, repetition_ == Repetition::Allowed);
        reply_ = manager_.post(made, body);
        body->setParent(reply_);
        connect(reply_, &QNetworkReply::socketStartedConnecting, body, &PostBody::forbidRepetition);
    } else {
        reply_ = manager_.get(made);
    }
    reply_->setReadBufferSize(readAhead);

    const auto heard = [this] { silence_.start(); };
    connect(reply_, &QNetworkReply::encrypted, this, heard);
    connect(reply_, &QNetworkReply::uploadProgress, this, heard);
    connect(reply_, &QNetworkReply::metaDataChanged, this, [this, heard] {
        heard();
        checkHead();
    });
    connect(reply_, &QNetworkReply::readyRead, this, [this, heard] {
        heard();
        takeBody();
    });
    // queued: a request that fails at once still completes after the call
    connect(reply_, &QNetworkReply::finished, this, &QtHttpExchange::finish, Qt::QueuedConnection);
}

/// Returns the target if the answer redirects a GET; otherwise empty.
QUrl QtHttpExchange::redirection() const
{
    constexpr std::array redirects{301, 302, 303, 307, 308};
    const bool isRedirect = request_.method != "POST"
        && std::ranges::find(redirects, response_.status) != redirects.end();
    const QByteArray location = isRedirect ? reply_->rawHeader("Location") : QByteArray();
    return location.isEmpty() ? QUrl() : request_.url.resolved(QUrl::fromEncoded(location));
}

void QtHttpExchange::followTo(const QUrl &url)
{
    const bool isLessSafe = request_.url.scheme() == "https"_L1 && url.scheme() != "https"_L1;
    const bool isElsewhere = originOf(url) != originOf(request_.url);
    if (++redirects_ > maxRedirects || isLessSafe || (isElsewhere && !request_.headers.isEmpty())) {
        fail(HttpError::Kind::Other, u"redirect not followed"_s);
        return;
    }
    if (const auto refusal = refusalOf(url)) {
        fail(refusal->kind, refusal->detail);
        return;
    }
    endTransfer();
    response_ = {};
    request_.url = url;
    resolveProxy();
}

void QtHttpExchange::checkHead()
{
    if (reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong() > request_.bodyLimit) {
        fail(HttpError::Kind::TooLarge, u"announced"_s);
    }
}

void QtHttpExchange::takeBody()
{
    if (!reply_) {
        return;
    }
    // Read in pieces: Qt allocates the whole requested size, and reports one available byte for any
    // amount of compressed data.
    constexpr qint64 piece = qint64{64} * 1024;
    QByteArray part;
    do {
        const qint64 room = request_.bodyLimit + 1 - response_.body.size();
        part = reply_->read(std::min(room, std::max(piece, reply_->bytesAvailable())));
        response_.body += part;
    } while (!part.isEmpty());
    if (response_.body.size() > request_.bodyLimit) {
        fail(HttpError::Kind::TooLarge, u"received"_s);
    }
}

void QtHttpExchange::finish()
{
    takeBody();
    if (!reply_) {
        return;
    }
    const QNetworkReply::NetworkError error = reply_->error();
    response_.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    // Qt prepares to resend a POST on a redirect, which is not followed, and sometimes when the end
    // of the connection is the end of the answer.
    const bool isRedirect = response_.status == 307 || response_.status == 308;
    const bool isUnsentAgain = error == QNetworkReply::ContentReSendError
        && ((isRedirect && isWhole()) || endsWithConnection());
    // Qt reports a status of 400 and above as an error whose kind depends on it.
    const bool isAnswer = error == QNetworkReply::NoError || isUnsentAgain
        || (response_.status >= 400 && error > QNetworkReply::UnknownProxyError
            && error != QNetworkReply::ContentReSendError
            && error != QNetworkReply::ProtocolFailure);
    if (!isAnswer) {
        fail(kindOf(error),
             QString::fromLatin1(
                 QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error)));
        return;
    }
    if (const QUrl url = redirection(); !url.isEmpty()) {
        followTo(url);
        return;
    }
    for (const auto &[name, value] : reply_->rawHeaderPairs()) {
        response_.headers.append({name, value});
    }
    Q_EMIT answered();
    complete(std::move(response_));
}

/// Returns whether the body has at least the announced length.
bool QtHttpExchange::isWhole() const
{
    return response_.body.size()
        >= reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
}

/// Returns whether an answer has begun whose end nothing but the end of the connection marks.
bool QtHttpExchange::endsWithConnection() const
{
    constexpr std::array marks{"Content-Length", "Transfer-Encoding",
                               "Content-Encoding"}; // Qt removes the length of compressed bodies
    return response_.status != 0 && std::ranges::none_of(marks, [this](const char *name) {
               return reply_->hasRawHeader(name);
           });
}

void QtHttpExchange::cancel()
{
    fail(HttpError::Kind::Cancelled, {});
}

void QtHttpExchange::fail(HttpError::Kind kind, const QString &detail)
{
    complete(HttpError{kind, detail});
}

void QtHttpExchange::complete(const Result<HttpResponse, HttpError> &result)
{
    const HttpCompletion completion = std::exchange(completion_, {});
    const bool isWanted = completion && context_;
    abandon();
    if (isWanted) {
        completion(result);
    }
}

void QtHttpExchange::abandon()
{
    completion_ = {};
    silence_.stop();
    total_.stop();
    endTransfer();
    deleteLater();
}

void QtHttpExchange::endTransfer()
{
    if (QNetworkReply *reply = std::exchange(reply_, nullptr)) {
        disconnect(reply, nullptr, this, nullptr);
        reply->abort();
        reply->deleteLater();
    }
}

} // namespace vellumo

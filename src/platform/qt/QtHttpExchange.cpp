// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/QtHttpExchange.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QMetaEnum>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int mostRedirects = 5;
constexpr qint64 readAhead = qint64{256} * 1024; // bytes that wait unread, at most

HttpError::Kind kindOf(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
    case QNetworkReply::ProxyConnectionRefusedError:
        return HttpError::Kind::refused;
    case QNetworkReply::HostNotFoundError:
    case QNetworkReply::ProxyNotFoundError:
        return HttpError::Kind::cannotResolve;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        return HttpError::Kind::timedOut;
    case QNetworkReply::SslHandshakeFailedError:
        return HttpError::Kind::untrusted;
    case QNetworkReply::RemoteHostClosedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ContentReSendError: // see PostBody
        return HttpError::Kind::cutShort;
    default:
        return HttpError::Kind::other;
    }
}

/// The body of a POST. When a connection ends before the answer comes, Qt would read it again and
/// send the request up to four times, and a service might do and charge for it as often. Here that
/// happens once at most, and only over a connection that was kept from an earlier request, which
/// may long have been dead.
class PostBody : public QIODevice {
public:
    PostBody(QByteArray bytes, bool mayRepeat) : bytes_(std::move(bytes)), mayRepeat_(mayRepeat)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    void forbidRepetition() { mayRepeat_ = false; }

    [[nodiscard]] qint64 size() const override { return bytes_.size(); }
    bool reset() override { return std::exchange(mayRepeat_, false) && QIODevice::reset(); }

protected:
    qint64 readData(char *data, qint64 length) override
    {
        const qint64 taken = std::min(length, bytes_.size() - pos());
        std::copy_n(bytes_.constData() + pos(), taken, data);
        return taken;
    }
    qint64 writeData(const char * /*data*/, qint64 /*length*/) override { return -1; }

private:
    QByteArray bytes_;
    bool mayRepeat_;
};

QNetworkRequest::RedirectPolicy redirectPolicy(const HttpRequest &request)
{
    if (request.method == "POST") {
        return QNetworkRequest::ManualRedirectPolicy;
    }
    return request.headers.isEmpty() ? QNetworkRequest::NoLessSafeRedirectPolicy
                                     : QNetworkRequest::SameOriginRedirectPolicy;
}

QNetworkRequest networkRequest(const HttpRequest &request)
{
    QNetworkRequest made(request.url);
    made.setHeader(QNetworkRequest::UserAgentHeader,
                   QString(u"vellumo/"_s + QCoreApplication::applicationVersion()));
    for (const auto &[name, value] : request.headers) {
        made.setRawHeader(name, value);
    }
    // Without TLS this would ask every server to switch protocols.
    made.setAttribute(QNetworkRequest::Http2AllowedAttribute, request.url.scheme() == "https"_L1);
    made.setAttribute(QNetworkRequest::RedirectPolicyAttribute, redirectPolicy(request));
    made.setMaximumRedirectsAllowed(mostRedirects);
    for (const auto attribute :
         {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
          QNetworkRequest::AuthenticationReuseAttribute}) {
        made.setAttribute(attribute, QNetworkRequest::Manual);
    }
    return made;
}

} // namespace

QtHttpExchange::QtHttpExchange(QNetworkAccessManager &manager, const HttpRequest &request,
                               Repetition repetition, QObject *context, HttpCompletion completion)
    : QObject(&manager)
    , context_(context)
    , completion_(std::move(completion))
    , bodyLimit_(request.bodyLimit)
{
    connect(context, &QObject::destroyed, this, &QtHttpExchange::abandon);

    silence_.setSingleShot(true);
    silence_.callOnTimeout(this, [this] { fail(HttpError::Kind::timedOut, u"silence"_s); });
    silence_.start(request.timeout);
    total_.setSingleShot(true);
    total_.callOnTimeout(this, [this] { fail(HttpError::Kind::timedOut, u"too slow"_s); });
    total_.start(request.totalTimeout);

    start(manager, request, repetition);
}

void QtHttpExchange::start(QNetworkAccessManager &manager, const HttpRequest &request,
                           Repetition repetition)
{
    const QNetworkRequest made = networkRequest(request);
    if (request.method == "POST") {
        auto *body = new PostBody(request.body, repetition == Repetition::allowed);
        reply_ = manager.post(made, body);
        body->setParent(reply_);
        connect(reply_, &QNetworkReply::socketStartedConnecting, body, &PostBody::forbidRepetition);
    } else {
        reply_ = manager.get(made);
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

void QtHttpExchange::checkHead()
{
    if (reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong() > bodyLimit_) {
        fail(HttpError::Kind::tooLarge, u"announced"_s);
    }
}

void QtHttpExchange::takeBody()
{
    if (!reply_) {
        return;
    }
    response_.body += reply_->read(bodyLimit_ - response_.body.size() + 1);
    if (response_.body.size() > bodyLimit_) {
        fail(HttpError::Kind::tooLarge, u"received"_s);
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
    // Qt flags an answer of a status from 400 on as an error, of a kind that tells the status.
    const bool isAnswer = error == QNetworkReply::NoError
        || (response_.status >= 400 && error > QNetworkReply::UnknownProxyError
            && error != QNetworkReply::ContentReSendError
            && error != QNetworkReply::ProtocolFailure);
    if (!isAnswer) {
        fail(kindOf(error),
             QString::fromLatin1(
                 QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error)));
        return;
    }
    for (const auto &[name, value] : reply_->rawHeaderPairs()) {
        response_.headers.append({name, value});
    }
    Q_EMIT answered();
    complete(std::move(response_));
}

void QtHttpExchange::cancel()
{
    fail(HttpError::Kind::cancelled, {});
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
    if (QNetworkReply *reply = std::exchange(reply_, nullptr)) {
        disconnect(reply, nullptr, this, nullptr);
        reply->abort();
        reply->deleteLater();
    }
    deleteLater();
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Result.h"
#include <QByteArray>
#include <QList>
#include <QUrl>
#include <chrono>
#include <functional>
#include <utility>

namespace vellumo {

using HttpHeaders = QList<std::pair<QByteArray, QByteArray>>;

/// One request with its limits. What it carries may be secret and is never logged.
struct HttpRequest {
    QByteArray method = "GET"; ///< GET or POST
    QUrl url; ///< https; or http to this machine or to an address of a private network
    HttpHeaders headers = {}; ///< sent verbatim, in place of what the session would send
    QByteArray body = {}; ///< of a POST

    /// How long nothing may arrive or be taken, from resolving the name to the last byte.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// How long all of it may take, however steadily bytes arrive.
    std::chrono::milliseconds totalTimeout = std::chrono::seconds(120);
    /// The longest body that is accepted, in bytes after decompression.
    qint64 bodyLimit = qint64{8} * 1024 * 1024;
};

/// A whole answer, whatever its status.
struct HttpResponse {
    int status = 0;
    HttpHeaders headers = {};
    QByteArray body = {};

    /// The first header of this name, whatever the case of its letters; empty without one.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// Why there is no whole answer. Statuses such as 404 are answers, not errors.
struct HttpError {
    enum class Kind : quint8 {
        timedOut, ///< one of the request's two times is over
        cannotResolve, ///< the host's or the proxy's name leads nowhere
        refused, ///< the host refused the connection
        untrusted, ///< no TLS connection, or the certificate is not to be trusted
        cutShort, ///< the connection ended before the answer did
        tooLarge, ///< the body exceeds its limit
        insecure, ///< not sent: http to a host beyond this machine and private networks
        noAddress, ///< not sent: no web address
        unsendable, ///< not sent: a header with control characters
        cancelled, ///< the session ended first
        other,
    };
    Kind kind = Kind::other;
    QString detail = {}; ///< for a log: what the network said, without address, headers and bodies
    friend bool operator==(const HttpError &, const HttpError &) = default;
};

/// "timed out" and the like, for a log.
[[nodiscard]] QString describe(HttpError::Kind kind);

using HttpCompletion = std::function<void(Result<HttpResponse, HttpError>)>;

/// Sends HTTP requests, any number at a time, over connections that are kept for the next one.
///
/// Certificates are verified and the system's proxies are used; when the system takes too long to
/// answer, its last answer, else none. Nothing is sent over http but to this machine and
/// to addresses of private networks. A POST follows no redirect and is
/// not repeated, unless a kept connection turns out to be dead. A GET follows redirects within its
/// origin (scheme, host and port), so that its headers reach no other host; one without headers of
/// its own follows them anywhere, but not from https to http. No cookies, no cache.
class HttpSession {
public:
    virtual ~HttpSession() = default;

    /// The completion runs exactly once, on the main thread and never before the call returns. When
    /// `context` is destroyed first, the transfer is ended and the completion never runs.
    virtual void send(const HttpRequest &request, QObject *context, HttpCompletion completion) = 0;

    /// Loads what the first request would have to wait for, which takes some milliseconds. Nothing
    /// of the network or of TLS is loaded before this or the first request.
    virtual void warmUp() = 0;
};

} // namespace vellumo

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
    HttpHeaders headers = {}; ///< sent verbatim; they replace the session's own headers
    QByteArray body = {}; ///< only for POST

    /// Maximum silence in either direction, from resolving the name to the last byte.
    std::chrono::milliseconds timeout = std::chrono::seconds(60);
    /// Maximum duration of the whole exchange.
    std::chrono::milliseconds totalTimeout = std::chrono::seconds(120);
    /// Maximum size of the answer's body, in bytes after decompression.
    qint64 bodyLimit = qint64{8} * 1024 * 1024;
};

/// A complete answer with any status.
struct HttpResponse {
    int status = 0;
    HttpHeaders headers = {};
    QByteArray body = {};

    /// Returns the value of the first header of this name, ignoring case; empty if there is none.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// Why there is no complete answer. Statuses such as 404 are answers, not errors.
struct HttpError {
    enum class Kind : quint8 {
        TimedOut, ///< one of the request's two timeouts has expired
        CannotResolve, ///< the name of the host or the proxy cannot be resolved
        Refused, ///< the host refused the connection
        Untrusted, ///< no TLS connection, or the certificate is not trusted
        CutShort, ///< the connection ended before the answer did
        TooLarge, ///< the body exceeds its limit
        Insecure, ///< not sent: http to a host beyond this machine and private networks
        NoAddress, ///< not sent: the URL is not a web address
        Unsendable, ///< not sent: a header with control characters
        Cancelled, ///< the session was destroyed first
        Other,
    };
    Kind kind = Kind::Other;
    QString detail = {}; ///< for a log: the network's message, without address, headers and bodies
    friend bool operator==(const HttpError &, const HttpError &) = default;
};

/// Returns a description such as "timed out", for a log.
[[nodiscard]] QString describe(HttpError::Kind kind);

using HttpCompletion = std::function<void(Result<HttpResponse, HttpError>)>;

/// Sends HTTP requests, any number at a time, over connections that are kept and reused. Main
/// thread only.
///
/// Certificates are verified. The system's proxies are used; if the system does not answer in time,
/// its last answer is used, else none. Plain http is limited to this machine and to addresses of
/// private networks. A POST follows no redirect and is repeated only if a kept connection turns out
/// to be dead. A GET with headers follows redirects only within its origin (scheme, host and port);
/// one without follows them anywhere, but not from https to http. There are no cookies and no
/// cache.
class HttpSession {
public:
    virtual ~HttpSession() = default;

    /// The completion runs exactly once, on the main thread and never before the call returns. When
    /// `context` is destroyed first, the transfer is aborted and the completion never runs.
    virtual void send(const HttpRequest &request, QObject *context, HttpCompletion completion) = 0;

    /// Loads the network and TLS libraries, which takes some milliseconds and would delay the first
    /// request. They are not loaded before this call or the first request.
    virtual void warmUp() = 0;
};

} // namespace vellumo

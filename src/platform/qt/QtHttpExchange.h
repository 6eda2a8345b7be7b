// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>

class QNetworkAccessManager;

namespace vellumo {

class ProxyLookup;

/// A pending request: enforces its limits, collects the answer, and completes once. Owned by the
/// manager; deletes itself after completion.
class QtHttpExchange : public QObject {
    Q_OBJECT

public:
    /// Whether a POST may be repeated when its connection turns out to be dead.
    enum class Repetition : quint8 { Forbidden, Allowed };

    QtHttpExchange(QNetworkAccessManager &manager, ProxyLookup &proxies, const HttpRequest &request,
                   Repetition repetition, QObject *context, HttpCompletion completion);

    /// Aborts the transfer and completes as cancelled.
    void cancel();

Q_SIGNALS:
    /// Emitted before the completion when a complete answer has arrived, with any status.
    void answered();
    /// Emitted before the completion when the request's silence timeout has expired.
    void fellSilent();

private:
    void resolveProxy();
    void start();
    [[nodiscard]] QUrl redirection() const;
    void followTo(const QUrl &url);
    void checkHead();
    void takeBody();
    void finish();
    [[nodiscard]] bool isWhole() const;
    [[nodiscard]] bool endsWithConnection() const;
    void fail(HttpError::Kind kind, const QString &detail);
    void complete(const Result<HttpResponse, HttpError> &result);
    void abandon();
    void endTransfer();

    QNetworkAccessManager &manager_;
    ProxyLookup &proxies_;
    HttpRequest request_; ///< with the current address after redirects
    Repetition repetition_;
    int redirects_ = 0; ///< number of redirects that were followed
    QPointer<QObject> context_;
    HttpCompletion completion_; ///< empty after completion
    HttpResponse response_;
    QPointer<QNetworkReply> reply_;
    QTimer silence_;
    QTimer total_;
};

} // namespace vellumo

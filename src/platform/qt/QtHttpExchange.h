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

/// One request on its way: keeps its limits, gathers the answer, and completes once. Owned by the
/// manager; deletes itself when it is over.
class QtHttpExchange : public QObject {
    Q_OBJECT

public:
    /// Whether a POST may be sent again when its connection turns out to be dead.
    enum class Repetition : quint8 { forbidden, allowed };

    QtHttpExchange(QNetworkAccessManager &manager, ProxyLookup &proxies, const HttpRequest &request,
                   Repetition repetition, QObject *context, HttpCompletion completion);

    /// Ends the transfer and completes at once.
    void cancel();

Q_SIGNALS:
    /// A whole answer has come, whatever its status. Emitted before the completion.
    void answered();
    /// Nothing has come for the request's time. Emitted before the completion.
    void fellSilent();

private:
    void findWay();
    void start();
    [[nodiscard]] QUrl redirection() const;
    void followTo(const QUrl &url);
    void checkHead();
    void takeBody();
    void finish();
    [[nodiscard]] bool isWhole() const;
    void fail(HttpError::Kind kind, const QString &detail);
    void complete(const Result<HttpResponse, HttpError> &result);
    void abandon();
    void endTransfer();

    QNetworkAccessManager &manager_;
    ProxyLookup &proxies_;
    HttpRequest request_; ///< with the address that is being asked
    Repetition repetition_;
    int redirects_ = 0; ///< that were followed
    QPointer<QObject> context_;
    HttpCompletion completion_; ///< empty once it is over
    HttpResponse response_;
    QPointer<QNetworkReply> reply_;
    QTimer silence_;
    QTimer total_;
};

} // namespace vellumo

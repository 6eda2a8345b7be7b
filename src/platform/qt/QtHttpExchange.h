// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>

class QNetworkAccessManager;

namespace vellumo {

/// One request on its way: keeps its limits, gathers the answer, and completes once. Owned by the
/// manager; deletes itself when it is over.
class QtHttpExchange : public QObject {
    Q_OBJECT

public:
    /// Whether a POST may be sent again when its connection turns out to be dead.
    enum class Repetition : quint8 { forbidden, allowed };

    QtHttpExchange(QNetworkAccessManager &manager, const HttpRequest &request,
                   Repetition repetition, QObject *context, HttpCompletion completion);

    /// Ends the transfer and completes at once.
    void cancel();

Q_SIGNALS:
    /// A whole answer has come, whatever its status. Emitted before the completion.
    void answered();

private:
    void start(QNetworkAccessManager &manager, const HttpRequest &request, Repetition repetition);
    void checkHead();
    void takeBody();
    void finish();
    void fail(HttpError::Kind kind, const QString &detail);
    void complete(const Result<HttpResponse, HttpError> &result);
    void abandon();

    QPointer<QObject> context_;
    HttpCompletion completion_; ///< empty once it is over
    qint64 bodyLimit_;
    HttpResponse response_;
    QPointer<QNetworkReply> reply_;
    QTimer silence_;
    QTimer total_;
};

} // namespace vellumo

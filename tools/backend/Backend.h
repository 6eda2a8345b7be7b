// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "backend/BackendTables.h"
#include "http/HttpServer.h"
#include <QStringList>

namespace vellumo::test {

/// Stands in for everything behind an account, on one loopback port: the web site's login page, the
/// secure-token service, and the notes service with its four operations. Requests that vellumo
/// would never send are refused and recorded as complaints.
class Backend : public QObject {
    Q_OBJECT

public:
    enum class Fault : quint8 {
        None,
        Offline, ///< the connection ends without an answer, and nothing is stored
        Slow, ///< answers after slowness
        ServerError, ///< status 500
        GraphqlErrors, ///< status 200 with two errors, and nothing is stored
        TokenExpired, ///< every ID token counts as expired
        CutAfterStoring, ///< the connection ends after everything is stored
        Malformed, ///< status 200 with half an answer
    };

    /// Step of an operation.
    enum class Step : quint8 { Received, Stored };

    /// Creates the database if it is missing. Port 0 selects any free port.
    explicit Backend(const QString &database, quint16 port = 0);

    [[nodiscard]] static QString apiKey();
    /// Returns the environment variables with which vellumo uses this backend.
    [[nodiscard]] QList<std::pair<QString, QString>> environment() const;
    [[nodiscard]] QString dataConnectUrl() const;
    [[nodiscard]] quint16 port() const;

    /// Sets the fault of later requests: of the four operations and of token refreshes.
    void fail(Fault fault) { fault_ = fault; }
    std::chrono::milliseconds slowness{2000};
    std::chrono::seconds tokenLifetime{3600};

    [[nodiscard]] BackendTables &tables() { return tables_; }
    /// One line for each request of an unexpected form; no contents.
    [[nodiscard]] const QStringList &complaints() const { return complaints_; }
    /// Returns the number of valid requests of this operation; "token" for refreshes.
    [[nodiscard]] int count(const QString &operation) const { return counts_.value(operation); }

    /// Called at each step of each of the four operations.
    std::function<void(const QString &operation, Step step)> onStep;
    /// Called with one line for each request and its result; no contents.
    std::function<void(const QString &line)> onLine;

private:
    [[nodiscard]] HttpAnswer serve(const HttpReceived &request);
    [[nodiscard]] HttpAnswer route(const HttpReceived &request);
    [[nodiscard]] static HttpAnswer loginPage();
    [[nodiscard]] HttpAnswer finishLogin(const QUrlQuery &query);
    [[nodiscard]] HttpAnswer control(const QByteArray &body);
    [[nodiscard]] HttpAnswer refresh(const HttpReceived &request, const QUrlQuery &query);
    [[nodiscard]] HttpAnswer execute(const QString &kind, const HttpReceived &request,
                                     const QUrlQuery &query);
    [[nodiscard]] HttpAnswer perform(const QString &operation, const QString &uid,
                                     const QJsonObject &variables);
    [[nodiscard]] HttpAnswer complain(const QString &what);
    void reached(const QString &operation, Step step);
    [[nodiscard]] HttpAnswer spoilt(const HttpAnswer &answer) const;

    BackendTables tables_;
    HttpServer server_;
    Fault fault_ = Fault::None;
    QString label_; ///< label of the current request, for its line
    QStringList complaints_;
    QHash<QString, int> counts_;
};

} // namespace vellumo::test

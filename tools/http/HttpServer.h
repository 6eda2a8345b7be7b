// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QSslCertificate>
#include <QUrl>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

class QTcpServer;
class QTcpSocket;

namespace vellumo::test {

/// A received request, byte for byte.
struct HttpReceived {
    QByteArray method;
    QByteArray target; ///< path and query as they were sent
    QList<std::pair<QByteArray, QByteArray>>
        headers; ///< in their order, names as they were spelled
    QByteArray body;
    int connection = 0; ///< 1 for the first connection that the server took

    /// Returns the values of all headers of this name, in any case.
    [[nodiscard]] QByteArrayList header(const QByteArray &name) const;
};

/// Compresses the bytes for `Content-Encoding: gzip`.
[[nodiscard]] QByteArray gzipped(const QByteArray &bytes);

/// What the server sends, well-formed or not.
struct HttpAnswer {
    QByteArray status = "200 OK";
    QList<std::pair<QByteArray, QByteArray>> headers = {}; ///< beside the body's length
    QByteArray body = {};

    std::optional<QByteArray> raw = {}; ///< sent in place of status, headers and body
    bool isEndless = false; ///< the body over and over, without a length
    std::optional<qsizetype> stopsAfter = {}; ///< bytes of all that would be sent
    bool closes = false; ///< the connection afterwards; otherwise it waits for the next request
    std::chrono::milliseconds bytePause{0}; ///< if not 0, one byte at a time with this pause
    std::chrono::milliseconds delay{0}; ///< before the first byte
};

/// Serves HTTP/1.1 on a loopback port, plain or with TLS. Records every whole request. A request
/// without an answer ends the test run, unless there is a handler to ask. With TLS it offers HTTP/2
/// as well, as services do, and a client that takes the offer ends the test run too.
class HttpServer : public QObject {
    Q_OBJECT

public:
    enum class Security : quint8 { Plain, Tls };

    using Handler = std::function<HttpAnswer(const HttpReceived &)>;

    /// Port 0 takes any free one. A port that is not free ends the process.
    explicit HttpServer(Security security = Security::Plain, quint16 port = 0);
    ~HttpServer() override;
    Q_DISABLE_COPY_MOVE(HttpServer)

    /// The address of a path such as "/v1/chat", by number without TLS and by name with it.
    [[nodiscard]] QUrl url(const QString &path) const { return base_.resolved(QUrl(path)); }
    /// Returns the certificate to trust, made for this run and only for "localhost". Needs TLS.
    [[nodiscard]] static QSslCertificate certificate();
    /// Makes all sessions of this process trust it that have not sent a request yet.
    static void trustCertificate();

    /// Sets the answer to requests of a method and a target from now on.
    void answer(const QByteArray &method, const QByteArray &target, const HttpAnswer &answer);
    /// Lets the handler answer everything else. What it is asked is not recorded.
    void answerWith(Handler handler) { handler_ = std::move(handler); }

    [[nodiscard]] const QList<HttpReceived> &requests() const { return requests_; }
    void forgetRequests() { requests_.clear(); }
    /// Counts the accepted connections, each with a TLS handshake if there is TLS.
    [[nodiscard]] int connections() const { return connections_; }
    [[nodiscard]] int openConnections() const { return openConnections_; }
    /// Counts the bytes of answers that were passed to the network.
    [[nodiscard]] qint64 bytesSent() const { return bytesSent_; }

    /// Existing connections get neither answers nor an end from now on, as if the network had
    /// vanished. New ones are served.
    void loseConnections();
    void closeConnections();
    /// Refuses connections from now on.
    void stopListening();

private:
    void take(QTcpSocket *socket);
    void serve(QTcpSocket *socket, HttpReceived request);
    void send(QTcpSocket *socket, const HttpAnswer &answer);

    std::unique_ptr<QTcpServer> server_;
    Security security_;
    QUrl base_;
    QHash<QByteArray, HttpAnswer> answers_; ///< by method, blank and target
    Handler handler_;
    QList<HttpReceived> requests_;
    int connections_ = 0;
    int openConnections_ = 0;
    qint64 bytesSent_ = 0;
};

} // namespace vellumo::test

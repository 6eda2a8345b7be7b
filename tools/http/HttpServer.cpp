// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "http/HttpServer.h"

#include <QFile>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>
#include <QtEndian>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype chunkSize = 64 * 1024;
constexpr qint64 mostWaiting = 4 * chunkSize;

struct Identity {
    QSslCertificate certificate;
    QSslKey key;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const Identity &identity()
{
    static const Identity made = [] {
        const QTemporaryDir folder;
        const QString certificate = folder.filePath(u"certificate.pem"_s);
        const QString key = folder.filePath(u"key.pem"_s);
        QProcess openssl;
        openssl.start(u"openssl"_s,
                      {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                       u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                       u"-subj"_s, u"/CN=localhost"_s, u"-addext"_s,
                       u"subjectAltName=DNS:localhost"_s, u"-keyout"_s, key, u"-out"_s,
                       certificate});
        if (!openssl.waitForFinished() || openssl.exitCode() != 0)
            qFatal("openssl cannot make a certificate: %s",
                   openssl.readAllStandardError().constData());
        return Identity{QSslCertificate(contentOf(certificate)), QSslKey(contentOf(key), QSsl::Ec)};
    }();
    return made;
}

/// Takes the first whole request off the bytes.
std::optional<HttpReceived> takeRequest(QByteArray &bytes)
{
    const qsizetype headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    const QByteArray head = bytes.left(headEnd);
    QByteArrayList lines = head.split('\n');
    const QByteArrayList start = lines.takeFirst().trimmed().split(' ');
    HttpReceived request;
    request.method = start.value(0);
    request.target = start.value(1);
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        // the value begins after one blank and ends before the carriage return
        QByteArray value = line.mid(colon + 2);
        if (value.endsWith('\r'))
            value.chop(1);
        request.headers.append({line.left(colon), value});
    }
    const qsizetype length = request.header("Content-Length").value(0, "0").toLongLong();
    if (bytes.size() < headEnd + 4 + length)
        return std::nullopt;
    request.body = bytes.mid(headEnd + 4, length);
    bytes.remove(0, headEnd + 4 + length);
    return request;
}

QByteArray wireForm(const HttpAnswer &answer)
{
    if (answer.raw)
        return *answer.raw;
    QByteArray bytes = "HTTP/1.1 " + answer.status + "\r\n";
    for (const auto &[name, value] : answer.headers)
        bytes += name + ": " + value + "\r\n";
    if (!answer.isEndless)
        bytes += "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n";
    return bytes + "\r\n" + answer.body;
}

/// Sends one answer as fast as the other side takes it, or byte by byte. Deleted with its socket.
class Sender : public QObject {
public:
    Sender(QTcpSocket *socket, const HttpAnswer &answer, qint64 &bytesSent)
        : QObject(socket)
        , socket_(socket)
        , answer_(answer)
        , bytes_(wireForm(answer))
        , bytesSent_(bytesSent)
    {
        if (answer.stopsAfter)
            bytes_.truncate(*answer.stopsAfter);
        if (answer.bytePause.count() > 0) {
            pause_.callOnTimeout(this, [this] { send(1); });
            pause_.start(answer.bytePause);
        } else {
            connect(socket, &QTcpSocket::bytesWritten, this, &Sender::fill);
            if (const auto *tls = qobject_cast<QSslSocket *>(socket))
                connect(tls, &QSslSocket::encryptedBytesWritten, this, &Sender::fill);
            fill();
        }
    }

private:
    void fill()
    {
        while (socket_->state() == QTcpSocket::ConnectedState && !isOver_
               && waiting() < mostWaiting)
            send(chunkSize);
    }

    /// Returns how many bytes the network has not taken yet, including encrypted ones.
    [[nodiscard]] qint64 waiting() const
    {
        const auto *tls = qobject_cast<QSslSocket *>(socket_);
        return socket_->bytesToWrite() + (tls ? tls->encryptedBytesToWrite() : 0);
    }

    void send(qsizetype most)
    {
        if (position_ == bytes_.size() && answer_.isEndless) {
            bytes_ = answer_.body;
            position_ = 0;
        }
        const QByteArray chunk = bytes_.mid(position_, most);
        position_ += chunk.size();
        bytesSent_ += socket_->write(chunk);
        if (position_ < bytes_.size() || answer_.isEndless)
            return;
        isOver_ = true;
        pause_.stop();
        if (answer_.closes)
            socket_->disconnectFromHost();
        deleteLater();
    }

    QTcpSocket *socket_;
    HttpAnswer answer_;
    QByteArray bytes_;
    qsizetype position_ = 0;
    bool isOver_ = false;
    QTimer pause_;
    qint64 &bytesSent_;
};

} // namespace

QByteArrayList HttpReceived::header(const QByteArray &name) const
{
    QByteArrayList values;
    for (const auto &[own, value] : headers) {
        if (own.compare(name, Qt::CaseInsensitive) == 0)
            values.append(value);
    }
    return values;
}

QByteArray gzipped(const QByteArray &bytes)
{
    // qCompress puts a length and a zlib header before the deflated bytes and a checksum behind
    // them
    const QByteArray deflated = qCompress(bytes).sliced(6).chopped(4);
    quint32 crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xedb88320U : 0U);
    }
    QByteArray end(8, '\0');
    qToLittleEndian(~crc, end.data());
    qToLittleEndian(static_cast<quint32>(bytes.size()), end.data() + 4);
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + deflated + end;
}

HttpServer::HttpServer(Security security, quint16 port) : security_(security)
{
    if (security == Security::Tls) {
        auto server = std::make_unique<QSslServer>();
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setLocalCertificate(identity().certificate);
        configuration.setPrivateKey(identity().key);
        configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
        configuration.setAllowedNextProtocols(
            {QSslConfiguration::ALPNProtocolHTTP2, QSslConfiguration::NextProtocolHttp1_1});
        server->setSslConfiguration(configuration);
        server_ = std::move(server);
    } else {
        server_ = std::make_unique<QTcpServer>();
    }
    if (!server_->listen(QHostAddress::LocalHost, port))
        qFatal("cannot listen on the loopback interface: %s", qPrintable(server_->errorString()));
    base_.setScheme(security == Security::Tls ? u"https"_s : u"http"_s);
    base_.setHost(security == Security::Tls ? u"localhost"_s : u"127.0.0.1"_s);
    base_.setPort(server_->serverPort());
    connect(server_.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *socket = server_->nextPendingConnection())
            take(socket);
    });
}

HttpServer::~HttpServer()
{
    const auto sockets = server_->findChildren<QTcpSocket *>();
    for (QTcpSocket *socket : sockets)
        socket->disconnect(this);
}

QSslCertificate HttpServer::certificate()
{
    return identity().certificate;
}

void HttpServer::trustCertificate()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificate(certificate());
    QSslConfiguration::setDefaultConfiguration(configuration);
}

void HttpServer::answer(const QByteArray &method, const QByteArray &target,
                        const HttpAnswer &answer)
{
    answers_.insert(method + ' ' + target, answer);
}

void HttpServer::loseConnections()
{
    const auto sockets = server_->findChildren<QTcpSocket *>();
    for (QTcpSocket *socket : sockets)
        disconnect(socket, &QTcpSocket::readyRead, this, nullptr);
}

void HttpServer::closeConnections()
{
    const auto sockets = server_->findChildren<QTcpSocket *>();
    for (QTcpSocket *socket : sockets)
        socket->disconnectFromHost();
}

void HttpServer::stopListening()
{
    server_->close();
    closeConnections();
}

void HttpServer::take(QTcpSocket *socket)
{
    const int connection = ++connections_;
    ++openConnections_;
    connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
        --openConnections_;
        socket->deleteLater();
    });
    const auto read = [this, socket, connection, bytes = QByteArray()]() mutable {
        bytes += socket->readAll();
        while (auto request = takeRequest(bytes)) {
            request->connection = connection;
            serve(socket, std::move(*request));
        }
    };
    connect(socket, &QTcpSocket::readyRead, this, read);
    if (socket->bytesAvailable() > 0)
        Q_EMIT socket->readyRead();
}

void HttpServer::serve(QTcpSocket *socket, HttpReceived request)
{
    const QByteArray known = request.method + ' ' + request.target;
    const auto found = answers_.constFind(known);
    if (found == answers_.cend() && handler_) {
        send(socket, handler_(request));
        return;
    }
    requests_.append(std::move(request));
    if (found == answers_.cend())
        qFatal("the server was asked for something unknown: %s", known.constData());
    send(socket, *found);
}

void HttpServer::send(QTcpSocket *socket, const HttpAnswer &answer)
{
    const auto begin = [this, socket, answer] { new Sender(socket, answer, bytesSent_); };
    if (answer.delay.count() > 0)
        QTimer::singleShot(answer.delay, socket, begin);
    else
        begin();
}

} // namespace vellumo::test

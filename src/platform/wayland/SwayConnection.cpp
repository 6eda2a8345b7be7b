// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/SwayConnection.h"

#include <algorithm>
#include <sys/socket.h>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// sway answers within a millisecond unless it is stopped.
constexpr auto replyTimeout = 5s;

constexpr std::chrono::milliseconds minRetryPause = 250ms;
constexpr std::chrono::milliseconds maxRetryPause = 30s;

QJsonDocument parsed(const QByteArray &payload)
{
    QJsonParseError error{};
    const auto document = QJsonDocument::fromJson(payload, &error);
    // Titles of windows are passed on as they are.
    return error.error == QJsonParseError::IllegalUTF8String
        ? QJsonDocument::fromJson(QString::fromUtf8(payload).toUtf8())
        : document;
}

} // namespace

SwayConnection::SwayConnection(QString socket, IsCompositor isCompositor)
    : path_(std::move(socket))
    , isCompositor_(std::move(isCompositor))
    , retryPause_(minRetryPause)
{
    replyDeadline_.setSingleShot(true);
    retry_.setSingleShot(true);
    connect(&replyDeadline_, &QTimer::timeout, &socket_, &QLocalSocket::abort);
    connect(&retry_, &QTimer::timeout, this, &SwayConnection::open);
    connect(&socket_, &QLocalSocket::readyRead, this, &SwayConnection::readArrived);
    // Queued: the socket has no descriptor yet when it emits this.
    connect(&socket_, &QLocalSocket::connected, this, &SwayConnection::onConnected,
            Qt::QueuedConnection);
    connect(&socket_, &QLocalSocket::stateChanged, this, &SwayConnection::onStateChanged);
}

SwayConnection::~SwayConnection()
{
    socket_.disconnect(this);
}

QString SwayConnection::socketOfSession()
{
    const QString own = qEnvironmentVariable("SWAYSOCK");
    return own.isEmpty() ? qEnvironmentVariable("I3SOCK") : own;
}

void SwayConnection::open()
{
    if (!path_.isEmpty()) {
        socket_.connectToServer(path_);
    }
}

void SwayConnection::onConnected()
{
    if (socket_.state() != QLocalSocket::ConnectedState) {
        return;
    }
    if (isCompositor_(peerProcess())) {
        isOpen_ = true;
        Q_EMIT opened();
    } else {
        socket_.abort();
    }
}

void SwayConnection::onStateChanged(QLocalSocket::LocalSocketState state)
{
    if (state == QLocalSocket::UnconnectedState) {
        reader_ = {};
        replies_.clear();
        replyDeadline_.stop();
        const bool wasOpen = std::exchange(isOpen_, false);
        if (wasOpen || retryPause_ > minRetryPause) {
            retry_.start(retryPause_);
            retryPause_ = std::min(2 * retryPause_, maxRetryPause);
        }
        if (wasOpen) {
            Q_EMIT closed();
        }
    }
}

qint64 SwayConnection::peerProcess() const
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    const auto descriptor = static_cast<int>(socket_.socketDescriptor());
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 ? peer.pid : 0;
}

void SwayConnection::send(SwayMessage::Type type, const QByteArray &payload, Reply reply)
{
    if (!isOpen_) {
        return;
    }
    socket_.write(SwayMessage{type, payload}.framed());
    replies_.append(std::move(reply));
    if (!replyDeadline_.isActive()) {
        replyDeadline_.start(replyTimeout);
    }
}

void SwayConnection::readArrived()
{
    if (!isOpen_ || std::exchange(isReading_, true)) {
        return; // called while a message is handled
    }
    socket_.waitForReadyRead(0);
    reader_.append(socket_.readAll());
    while (const auto message = reader_.next()) {
        handle(*message);
    }
    isReading_ = false;
    if (reader_.isBroken()) {
        socket_.abort();
    }
}

void SwayConnection::handle(const SwayMessage &message)
{
    if (message.isEvent()) {
        Q_EMIT eventArrived(message.type, parsed(message.payload));
        return;
    }
    if (replies_.isEmpty()) {
        return;
    }
    retryPause_ = minRetryPause;
    const Reply reply = replies_.dequeue();
    if (replies_.isEmpty()) {
        replyDeadline_.stop();
    } else {
        replyDeadline_.start(replyTimeout);
    }
    if (reply) {
        reply(parsed(message.payload));
    }
}

void SwayConnection::waitForReplies(QDeadlineTimer deadline)
{
    while (isOpen_ && !replies_.isEmpty() && !deadline.hasExpired()) {
        socket_.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
        readArrived();
    }
}

} // namespace vellumo

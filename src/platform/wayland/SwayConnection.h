// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/SwayMessages.h"
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QObject>
#include <QQueue>
#include <QTimer>
#include <chrono>
#include <functional>

namespace vellumo {

/// A connection to sway's IPC. Nothing blocks, except for waitForReplies(). A connection that was
/// open is opened again when it is lost: sway drops clients that do not read. Main thread only.
class SwayConnection : public QObject {
    Q_OBJECT

public:
    using Reply = std::function<void(const QJsonDocument &)>;
    using IsCompositor = std::function<bool(qint64 process)>;

    /// `isCompositor` returns whether the process that owns the socket is the compositor of this
    /// session: a session that was started in a window of another one inherits the other's socket.
    SwayConnection(QString socket, IsCompositor isCompositor);
    ~SwayConnection() override;
    Q_DISABLE_COPY_MOVE(SwayConnection)

    /// Returns the path of the socket that the environment names; empty when it names none.
    [[nodiscard]] static QString socketOfSession();

    /// Opens the connection, unless the path is empty.
    void open();
    [[nodiscard]] bool isOpen() const { return isOpen_; }

    /// Sends a message. `reply` runs once from readArrived() or the event loop, or not at all when
    /// the connection is lost before. Does nothing while the connection is not open.
    void send(SwayMessage::Type type, const QByteArray &payload, Reply reply = {});

    /// Handles what has arrived, without waiting.
    void readArrived();

    /// Blocks, without running an event loop, until sway has replied to every message or the
    /// deadline has passed. sway drops what it has not read when the connection is closed.
    void waitForReplies(QDeadlineTimer deadline);

Q_SIGNALS:
    void opened();
    /// Emitted when a connection that was open is lost.
    void closed();
    void eventArrived(quint32 type, const QJsonDocument &content);

private:
    void onConnected();
    void onStateChanged(QLocalSocket::LocalSocketState state);
    void handle(const SwayMessage &message);
    [[nodiscard]] qint64 peerProcess() const;

    QString path_;
    IsCompositor isCompositor_;
    QLocalSocket socket_;
    SwayMessageReader reader_;
    QQueue<Reply> replies_; ///< that are awaited, in the order of the requests
    QTimer replyDeadline_;
    QTimer retry_;
    std::chrono::milliseconds retryPause_;
    bool isOpen_ = false;
    bool isReading_ = false;
};

} // namespace vellumo

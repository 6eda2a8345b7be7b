// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <cstdint>

namespace vellumo {

/// The program vellumo-taps with a folder of pipes as keyboards. Its socket listens before the
/// program is started, as it does under systemd, and remains when it ends.
class RunningTaps {
public:
    RunningTaps();
    ~RunningTaps();
    Q_DISABLE_COPY_MOVE(RunningTaps)

    void listen();
    /// Lets every user connect.
    [[nodiscard]] bool openToEveryUser();
    [[nodiscard]] bool start();
    void kill();
    [[nodiscard]] bool isRunning() const { return process_.state() == QProcess::Running; }

    [[nodiscard]] QString socketPath() const { return folder_.filePath(QStringLiteral("socket")); }
    [[nodiscard]] QString keyboardPath(const QString &name) const
    {
        return folder_.filePath(QStringLiteral("input/") + name);
    }

private:
    QTemporaryDir folder_;
    int socket_ = -1;
    QProcess process_;
};

/// One keyboard as a pipe.
class PipedKeyboard {
public:
    explicit PipedKeyboard(const QString &path);
    ~PipedKeyboard();
    Q_DISABLE_COPY_MOVE(PipedKeyboard)

    /// Returns whether the pipe has a reader.
    [[nodiscard]] bool isRead();

    /// Writes events of keys: 1 is a press, 0 a release. Needs a reader.
    void send(std::uint16_t code, int value);
    void tapAlt();
    void sendEvent(std::uint16_t type, std::uint16_t code, int value);

    void unplug();

private:
    QByteArray path_;
    int pipe_ = -1;
};

/// A client of the service.
class TapsClient {
public:
    /// `request` is sent unless it is empty.
    explicit TapsClient(const QString &socketPath, const QByteArray &request);
    ~TapsClient();
    Q_DISABLE_COPY_MOVE(TapsClient)

    /// Returns all that was heard so far, with a final "." when the service has closed the
    /// connection.
    [[nodiscard]] QByteArray heard();

private:
    int socket_;
    QByteArray heard_;
    bool isOpen_ = true;
};

} // namespace vellumo

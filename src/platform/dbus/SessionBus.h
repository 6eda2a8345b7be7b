// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QPointer>
#include <QThread>
#include <chrono>
#include <memory>
#include <optional>

namespace vellumo {

/// The session bus, opened in the background: a bus daemon that hangs would otherwise hold the
/// main thread for half a minute.
class SessionBus : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Starts opening, once.
    void open();

    /// Blocks, without running an event loop, until opening has come to an end or the time is up.
    /// opened() is emitted before this returns.
    void waitUntilOpened(std::chrono::milliseconds patience);

    /// The open bus; absent before opened() and on a desktop without one.
    [[nodiscard]] std::optional<QDBusConnection> connection() const { return connection_; }
    [[nodiscard]] bool hasOpened() const { return finished_; }

Q_SIGNALS:
    /// Opening has ended; connection() has the result. Emitted once.
    void opened();

private:
    void finish();

    std::shared_ptr<std::optional<QDBusConnection>> result_;
    std::optional<QDBusConnection> connection_;
    QPointer<QThread> thread_;
    bool finished_ = false;
};

} // namespace vellumo

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

/// The session bus, opened in the background, since a hung bus daemon would block the main thread
/// for half a minute.
class SessionBus : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Starts opening the bus; later calls do nothing.
    void open();

    /// Blocks, without running an event loop, until the bus is open or opening has failed, at most
    /// for the timeout. opened() is emitted before this returns.
    void waitUntilOpened(std::chrono::milliseconds timeout);

    /// Returns the bus; absent before opened() and on a desktop without one.
    [[nodiscard]] std::optional<QDBusConnection> connection() const { return connection_; }
    [[nodiscard]] bool hasOpened() const { return finished_; }

Q_SIGNALS:
    /// Emitted once, when opening has succeeded or failed.
    void opened();

private:
    void finish();

    std::shared_ptr<std::optional<QDBusConnection>> result_;
    std::optional<QDBusConnection> connection_;
    QPointer<QThread> thread_;
    bool finished_ = false;
};

} // namespace vellumo

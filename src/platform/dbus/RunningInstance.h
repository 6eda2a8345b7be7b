// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QStringList>
#include <functional>

namespace vellumo {

/// What a process that was started asks of the one that runs.
struct InstanceRequest {
    QString action; ///< empty: to be activated, or to open the URLs
    QStringList urls;
};

/// The vellumo that already has the program's name on the session bus, as seen from a process that
/// has just been started. Needs an application object; every call is bounded.
class RunningInstance {
public:
    /// Connects to the session bus on a connection of its own, which is closed with this object.
    /// Finds no instance without a bus.
    RunningInstance();
    ~RunningInstance();
    RunningInstance(const RunningInstance &) = delete;
    RunningInstance &operator=(const RunningInstance &) = delete;
    RunningInstance(RunningInstance &&) = delete;
    RunningInstance &operator=(RunningInstance &&) = delete;

    [[nodiscard]] bool exists() const;

    /// Waits until the condition holds, asking again whenever an instance takes the name, and once
    /// when the descriptor that `wait` returns has become readable; false at the deadline. `wait`
    /// is called only if there is something to wait for, and may return -1. Runs an event loop.
    /// Without a bus it asks once.
    [[nodiscard]] bool waitUntil(const std::function<bool()> &condition,
                                 const std::function<int()> &wait, QDeadlineTimer deadline) const;

    enum class Answer : quint8 { Accepted, Refused, Gone, None };
    /// Hands the request over. Gone: the instance ended before it answered.
    [[nodiscard]] Answer handOver(const InstanceRequest &request) const;

private:
    QDBusConnection bus_;
};

} // namespace vellumo

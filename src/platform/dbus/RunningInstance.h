// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QStringList>
#include <functional>
#include <optional>

namespace vellumo {

/// A request of a new process to the running instance.
struct InstanceRequest {
    QString action; ///< empty: activate, or open the URLs
    QStringList urls;
};

/// The running instance, which owns the program's name on the session bus, as seen from a new
/// process. Needs an application object; every call has a timeout.
class RunningInstance {
public:
    /// Opens a connection of its own to the session bus, closed by the destructor. Without a bus
    /// there is no instance.
    RunningInstance();
    ~RunningInstance();
    RunningInstance(const RunningInstance &) = delete;
    RunningInstance &operator=(const RunningInstance &) = delete;
    RunningInstance(RunningInstance &&) = delete;
    RunningInstance &operator=(RunningInstance &&) = delete;

    [[nodiscard]] bool exists() const;

    /// Waits until the condition holds, and returns false at the deadline. The condition is checked
    /// whenever an instance takes the name, and once when the descriptor returned by `wait` becomes
    /// readable. `wait` is called only if waiting is necessary, and may return -1. Runs an event
    /// loop. Without a bus the condition is checked once.
    [[nodiscard]] bool waitUntil(const std::function<bool()> &condition,
                                 const std::function<int()> &wait, QDeadlineTimer deadline) const;

    enum class Answer : quint8 { Accepted, Refused, Gone, None };
    /// Hands the request over and blocks until the reply. Gone: the instance ended before it
    /// answered.
    [[nodiscard]] Answer handOver(const InstanceRequest &request) const;

    struct Report {
        QString text;
        bool canWork = false; ///< false: no selection can be explained
    };
    /// Blocks until the instance has written its report. Absent if it does not answer or
    /// knows no reports.
    [[nodiscard]] std::optional<Report> report() const;

private:
    QDBusConnection bus_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <QObject>
#include <functional>
#include <memory>
#include <vector>

namespace vellumo {

/// The installed monitors of one kind. Handles keep only a weak reference, so they may outlive it.
class MonitorList : public QObject, public std::enable_shared_from_this<MonitorList> {
    Q_OBJECT

public:
    using Handler = std::function<bool(const Event &)>;

    [[nodiscard]] std::unique_ptr<EventMonitorHandle> add(EventMask mask, Handler handler);

    /// Passes the event to the monitors that are registered for it, the newest first, until a
    /// handler swallows it. Monitors removed by a handler are skipped; monitors added by a handler
    /// get only the next event. Returns true if no handler swallowed it.
    bool deliver(const Event &event);

    /// Returns the event types of all monitors.
    [[nodiscard]] EventMask wanted() const;

Q_SIGNALS:
    /// Emitted after a monitor was added or removed.
    void changed();

private:
    struct Monitor {
        EventMask mask = 0;
        Handler handler;
        bool installed = true;
    };
    class Handle;

    void remove(const std::shared_ptr<Monitor> &monitor);

    std::vector<std::shared_ptr<Monitor>> monitors_;
};

} // namespace vellumo

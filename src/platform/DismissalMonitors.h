// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <functional>
#include <memory>
#include <vector>

namespace vellumo {

/// Monitors the events that close an open floating panel: Escape in a window of this program, and
/// presses and scrolling anywhere. Main thread only.
class DismissalMonitors {
public:
    struct Handlers {
        /// Escape was pressed; no other handler gets it.
        std::function<void()> escaped;
        /// Anything else happened, in this program or another: close if the pointer is outside.
        /// Keys are those of this program's windows.
        std::function<void(EventType type)> acted;
    };

    /// The monitoring must outlive this object.
    explicit DismissalMonitors(EventMonitoring &monitoring) : monitoring_(monitoring) { }

    /// Starts monitoring; restarts if it is already running. Handlers may call stop(), and are
    /// never called after this object is destroyed.
    void start(const Handlers &handlers);
    void stop();

private:
    EventMonitoring &monitoring_;
    std::unique_ptr<EventMonitorHandle> local_;
    std::vector<std::unique_ptr<EventMonitorHandle>> global_;
};

} // namespace vellumo

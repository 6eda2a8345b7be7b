// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"

namespace vellumo {

/// Monitors without events, for galleries, whose windows must stay open.
class NoMonitors final : public EventMonitoring {
public:
    std::unique_ptr<EventMonitorHandle>
    addGlobalMonitor(EventMask /*mask*/, std::function<void(const Event &)> /*handler*/) override
    {
        return nullptr;
    }
    std::unique_ptr<EventMonitorHandle>
    addLocalMonitor(EventMask /*mask*/, std::function<bool(const Event &)> /*handler*/) override
    {
        return nullptr;
    }
    bool waitForRelease(quint32 /*flags*/, QDeadlineTimer /*deadline*/) override { return true; }
};

} // namespace vellumo

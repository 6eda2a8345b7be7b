// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <QList>

namespace vellumo {

/// Delivers events of the test to monitors. Handlers may add and remove monitors.
class FakeEventMonitors : public EventMonitoring {
public:
    bool canInstall = true;
    bool isHeld = false; ///< whether waitForRelease() fails
    int waitsForRelease = 0; ///< number of calls of waitForRelease()

    [[nodiscard]] std::unique_ptr<EventMonitorHandle>
    addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler) override;
    [[nodiscard]] std::unique_ptr<EventMonitorHandle>
    addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler) override;
    bool waitForRelease(quint32 flags, QDeadlineTimer deadline) override;

    void sendGlobal(const Event &event);

    /// Returns whether the event would have been delivered to our window.
    bool sendLocal(const Event &event);

    [[nodiscard]] QList<EventMask> globalMasks() const { return masks(false); }
    [[nodiscard]] QList<EventMask> localMasks() const { return masks(true); }

private:
    struct Monitor {
        int id = 0;
        bool local = false;
        EventMask mask = 0;
        std::function<bool(const Event &)> handler;
    };
    class Handle;

    std::unique_ptr<EventMonitorHandle> add(Monitor monitor);
    [[nodiscard]] bool send(const Event &event, bool local);
    [[nodiscard]] QList<EventMask> masks(bool local) const;

    /// Shared with the handles, which may outlive the monitors.
    std::shared_ptr<QList<Monitor>> monitors_ = std::make_shared<QList<Monitor>>();
    int lastId_ = 0;
};

} // namespace vellumo

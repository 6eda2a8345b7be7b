// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeEventMonitors.h"

#include <algorithm>

namespace vellumo {

class FakeEventMonitors::Handle : public EventMonitorHandle {
public:
    Handle(std::weak_ptr<QList<Monitor>> monitors, int id) : monitors_(std::move(monitors)), id_(id)
    {
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    Handle(Handle &&) = delete;
    Handle &operator=(Handle &&) = delete;
    ~Handle() override
    {
        if (const auto monitors = monitors_.lock()) {
            monitors->removeIf([this](const Monitor &monitor) { return monitor.id == id_; });
        }
    }

private:
    std::weak_ptr<QList<Monitor>> monitors_;
    int id_;
};

std::unique_ptr<EventMonitorHandle>
FakeEventMonitors::addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler)
{
    return add({0, false, mask, [handler = std::move(handler)](const Event &event) {
                    handler(event);
                    return true;
                }});
}

std::unique_ptr<EventMonitorHandle>
FakeEventMonitors::addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler)
{
    return add({0, true, mask, std::move(handler)});
}

std::unique_ptr<EventMonitorHandle> FakeEventMonitors::add(Monitor monitor)
{
    if (!canInstall) {
        return nullptr;
    }
    monitor.id = ++lastId_;
    monitors_->append(std::move(monitor));
    return std::make_unique<Handle>(monitors_, lastId_);
}

bool FakeEventMonitors::waitForRelease(quint32 flags, QDeadlineTimer deadline)
{
    Q_UNUSED(flags)
    Q_UNUSED(deadline)
    ++waitsForRelease;
    return !isHeld;
}

void FakeEventMonitors::sendGlobal(const Event &event)
{
    static_cast<void>(send(event, false));
}

bool FakeEventMonitors::sendLocal(const Event &event)
{
    return send(event, true);
}

bool FakeEventMonitors::send(const Event &event, bool local)
{
    const QList<Monitor> present = *monitors_;
    return std::all_of(present.crbegin(), present.crend(), [&](const Monitor &monitor) {
        const bool isInstalled =
            std::any_of(monitors_->cbegin(), monitors_->cend(),
                        [&](const Monitor &other) { return other.id == monitor.id; });
        const bool isWanted =
            isInstalled && monitor.local == local && (monitor.mask & maskOf(event.type)) != 0;
        return !isWanted || monitor.handler(event);
    });
}

QList<EventMask> FakeEventMonitors::masks(bool local) const
{
    QList<EventMask> masks;
    for (const Monitor &monitor : *monitors_) {
        if (monitor.local == local) {
            masks.append(monitor.mask);
        }
    }
    return masks;
}

} // namespace vellumo

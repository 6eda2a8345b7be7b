// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/MonitorList.h"

#include <algorithm>
#include <utility>

namespace vellumo {

class MonitorList::Handle final : public EventMonitorHandle {
public:
    Handle(std::weak_ptr<MonitorList> list, std::shared_ptr<Monitor> monitor)
        : list_(std::move(list))
        , monitor_(std::move(monitor))
    {
    }
    Handle(const Handle &) = delete;
    Handle &operator=(const Handle &) = delete;
    Handle(Handle &&) = delete;
    Handle &operator=(Handle &&) = delete;
    ~Handle() override
    {
        if (const auto list = list_.lock()) {
            list->remove(monitor_);
        }
    }

private:
    std::weak_ptr<MonitorList> list_;
    std::shared_ptr<Monitor> monitor_;
};

std::unique_ptr<EventMonitorHandle> MonitorList::add(EventMask mask, Handler handler)
{
    auto monitor = std::make_shared<Monitor>();
    monitor->mask = mask;
    monitor->handler = std::move(handler);
    monitors_.push_back(monitor);
    Q_EMIT changed();
    return std::make_unique<Handle>(weak_from_this(), std::move(monitor));
}

bool MonitorList::deliver(const Event &event)
{
    const auto keepAlive = shared_from_this();
    const auto monitors = monitors_; // handlers may add and remove
    return std::all_of(monitors.crbegin(), monitors.crend(), [&event](const auto &monitor) {
        const bool isWanted = monitor->installed && (monitor->mask & maskOf(event.type)) != 0;
        return !isWanted || monitor->handler(event);
    });
}

EventMask MonitorList::wanted() const
{
    EventMask mask = 0;
    for (const auto &monitor : monitors_) {
        mask |= monitor->mask;
    }
    return mask;
}

void MonitorList::remove(const std::shared_ptr<Monitor> &monitor)
{
    monitor->installed = false;
    std::erase(monitors_, monitor);
    Q_EMIT changed();
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandEventMonitors.h"

#include "platform/wayland/LayerShell.h"
#include "platform/x11/MonitorList.h"
#include "platform/x11/X11EventMonitors.h"
#include <QGuiApplication>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

using std::chrono::milliseconds;

constexpr EventMask flagsMask = maskOf(EventType::FlagsChanged);
constexpr int x11Source = -1; ///< beside the indices of sources_

milliseconds sinceBegin(TapSource::Time at)
{
    return std::chrono::duration_cast<milliseconds>(at.time_since_epoch());
}

bool isOptionAlone(quint32 flags)
{
    return (flags & ModifierFlag::DeviceIndependentMask) == ModifierFlag::Option;
}

/// Two monitors as one.
class BothHandles : public EventMonitorHandle {
public:
    BothHandles(std::unique_ptr<EventMonitorHandle> first,
                std::unique_ptr<EventMonitorHandle> second)
        : first_(std::move(first))
        , second_(std::move(second))
    {
    }

private:
    std::unique_ptr<EventMonitorHandle> first_;
    std::unique_ptr<EventMonitorHandle> second_;
};

} // namespace

WaylandEventMonitors::WaylandEventMonitors(X11EventMonitors &x11)
    : x11_(x11)
    , global_(std::make_shared<MonitorList>())
    , elsewhere_(std::make_shared<MonitorList>())
    , local_(std::make_shared<MonitorList>())
    , x11Global_(x11.addGlobalMonitor(flagsMask,
                                      [this](const Event &event) { handleX11(event, *global_); }))
    , x11Local_(x11.addLocalMonitor(flagsMask, [this](const Event &event) {
        handleX11(event, *local_);
        return true;
    }))
{
    if (qGuiApp != nullptr) {
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
                &WaylandEventMonitors::handleFocus);
    }
}

WaylandEventMonitors::~WaylandEventMonitors() = default;

void WaylandEventMonitors::add(TapSource &source)
{
    const auto index = static_cast<int>(sources_.size());
    sources_.append(&source);
    connect(&source, &TapSource::reachChanged, this, &WaylandEventMonitors::reachChanged);
    connect(&source, &TapSource::pressed, this, [this, index](TapSource::Time at) {
        if (merger_.press(index, at)) {
            deliver(ModifierFlag::Option, at);
        }
    });
    connect(&source, &TapSource::released, this, [this, index](TapSource::Time at) {
        if (merger_.release(index, at)) {
            deliver(0, at);
        }
    });
    connect(&source, &TapSource::tapped, this, [this, index](TapSource::Time at) {
        if (merger_.tap(index, at)) {
            deliver(ModifierFlag::Option, at);
            deliver(0, at);
        }
    });
}

bool WaylandEventMonitors::hearsEveryWindow() const
{
    return std::ranges::any_of(sources_, &TapSource::hearsEveryWindow);
}

void WaylandEventMonitors::handleFocus(QWindow *window)
{
    const QPointer<QWindow> before = std::exchange(focus_, window);
    const bool isLost = window == nullptr && before != nullptr && before->isVisible()
        && !before->property(layerProperty::yieldsKeyboard).toBool();
    if (isLost) {
        Event event;
        event.type = EventType::LeftMouseDown;
        event.timestampMs = sinceBegin(std::chrono::steady_clock::now()).count();
        elsewhere_->deliver(event);
    }
}

void WaylandEventMonitors::deliver(quint32 flags, TapSource::Time at)
{
    Event event;
    event.type = EventType::FlagsChanged;
    event.modifierFlags = flags;
    event.timestampMs = sinceBegin(at).count();
    global_->deliver(event);
}

/// Converts the server's time, so that the taps of different sources can be compared. The smallest
/// distance seen is that of an event that was processed without delay.
TapSource::Time WaylandEventMonitors::timeOf(const Event &event)
{
    const auto now = sinceBegin(std::chrono::steady_clock::now());
    const milliseconds time(event.timestampMs);
    clockDistance_ = std::min(clockDistance_.value_or(now - time), now - time);
    return TapSource::Time(time + *clockDistance_);
}

void WaylandEventMonitors::handleX11(const Event &event, MonitorList &monitors)
{
    const auto at = timeOf(event);
    const bool isOption = isOptionAlone(event.modifierFlags);
    const bool isNew = isOption ? merger_.press(x11Source, at) : merger_.release(x11Source, at);
    if (isOption && !isNew) {
        return;
    }
    Event converted = event;
    converted.timestampMs = sinceBegin(at).count();
    monitors.deliver(converted);
}

std::unique_ptr<EventMonitorHandle>
WaylandEventMonitors::addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler)
{
    std::unique_ptr<EventMonitorHandle> ofX11;
    if ((mask & ~flagsMask) != 0) {
        ofX11 = x11_.addGlobalMonitor(mask & ~flagsMask, handler);
    }
    if ((mask & maskOf(EventType::LeftMouseDown)) != 0) {
        ofX11 = std::make_unique<BothHandles>(std::move(ofX11),
                                              elsewhere_->add(mask, [handler](const Event &event) {
                                                  handler(event);
                                                  return true;
                                              }));
    }
    if ((mask & flagsMask) == 0) {
        return ofX11;
    }
    return std::make_unique<BothHandles>(
        std::move(ofX11),
        global_->add(flagsMask, [handler = std::move(handler)](const Event &event) {
            handler(event);
            return true;
        }));
}

std::unique_ptr<EventMonitorHandle>
WaylandEventMonitors::addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler)
{
    std::unique_ptr<EventMonitorHandle> ofX11;
    if ((mask & ~flagsMask) != 0) {
        ofX11 = x11_.addLocalMonitor(mask & ~flagsMask, handler);
    }
    if ((mask & flagsMask) == 0) {
        return ofX11;
    }
    return std::make_unique<BothHandles>(std::move(ofX11),
                                         local_->add(flagsMask, std::move(handler)));
}

bool WaylandEventMonitors::waitForRelease(quint32 flags, QDeadlineTimer deadline)
{
    if ((flags & ModifierFlag::Option) != 0) {
        for (TapSource *source : sources_) {
            if (!source->waitForRelease(deadline)) {
                return false;
            }
        }
    }
    return !x11_.knowsModifiers() || x11_.waitForRelease(flags, deadline);
}

} // namespace vellumo

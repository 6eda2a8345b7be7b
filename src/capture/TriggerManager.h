// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace vellumo {

/// Turns two quick presses of Option, made anywhere in the session, into one call.
///
/// A press counts at the moment the modifiers become Option alone; what is typed between two
/// presses does not matter. Times are those of the events, so that presses queued behind a busy
/// moment keep their distance.
class TriggerManager : public QObject {
    Q_OBJECT

public:
    /// The longest gap between two presses that still makes a double tap.
    static constexpr std::chrono::milliseconds doubleTapInterval{360};

    /// The monitoring must outlive this object.
    explicit TriggerManager(EventMonitoring &events, QObject *parent = nullptr);

    /// Runs on the main thread, outside of the event's delivery.
    std::function<void()> onDoubleTapOption;

    /// Starts listening; when listening already, starts over.
    void start();

    /// Stops listening and forgets a pending press.
    void stop();

private:
    void handleFlagsChanged(const Event &event);
    void handleLater(const Event &event);

    EventMonitoring &events_;
    std::unique_ptr<EventMonitorHandle> eventMonitor_;
    std::unique_ptr<EventMonitorHandle> localEventMonitor_;
    std::optional<std::chrono::milliseconds> lastOptionTapAt_;
};

} // namespace vellumo

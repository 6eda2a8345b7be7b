// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace vellumo {

/// Calls back on two quick presses of Option anywhere in the session.
///
/// A press counts when the modifiers become Option alone; keys typed between two presses do not
/// matter. Times are those of the events, so that a delayed delivery does not change them.
class TriggerManager : public QObject {
    Q_OBJECT

public:
    /// Maximum time between the two presses of a double tap.
    static constexpr std::chrono::milliseconds doubleTapInterval{360};
    /// How long the second press is held for onOptionHeld.
    static constexpr std::chrono::milliseconds holdTime{450};

    /// The monitoring must outlive this object.
    explicit TriggerManager(EventMonitoring &events, QObject *parent = nullptr);

    /// Runs on the main thread, from the event loop.
    std::function<void()> onDoubleTapOption;
    /// Runs after onDoubleTapOption if the key stays pressed, alone, for the hold time.
    std::function<void()> onOptionHeld;

    /// Returns whether the release of the last press was reported when it happened. Some desktops
    /// report whole taps only.
    [[nodiscard]] bool knowsHolding() const { return knowsHolding_; }

    /// Starts listening. If it is already listening, forgets a pending press.
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
    std::optional<qint64> pressedAt_; ///< on the events' clock, while Option is pressed alone
    bool knowsHolding_ = true;
    QTimer hold_;
};

} // namespace vellumo

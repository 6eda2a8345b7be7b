// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <QElapsedTimer>
#include <chrono>
#include <memory>
#include <optional>

namespace vellumo {

/// Records the last two presses of Option, so that a selection reader can tell what the taps
/// themselves have changed. Main thread only.
class OptionTaps {
public:
    /// `events` must outlive this object.
    explicit OptionTaps(EventMonitoring &events);

    /// Returns the time since the first tap of the double tap that is being handled; absent when
    /// there was none recently.
    [[nodiscard]] std::optional<std::chrono::milliseconds> sinceFirst() const;

private:
    void note(const Event &event);

    std::optional<qint64> lastAt_; ///< on the events' clock
    std::optional<std::chrono::milliseconds> gap_; ///< time between the last two presses
    QElapsedTimer sinceLast_;
    std::unique_ptr<EventMonitorHandle> global_;
    std::unique_ptr<EventMonitorHandle> local_;
};

} // namespace vellumo

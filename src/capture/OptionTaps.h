// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <QElapsedTimer>
#include <chrono>
#include <memory>
#include <optional>

namespace vellumo {

/// Remembers when Option was pressed the last two times, so that a reader of selections knows
/// what the taps themselves have changed. Main thread only.
class OptionTaps {
public:
    /// `events` must outlive this object.
    explicit OptionTaps(EventMonitoring &events);

    /// Since the first of two taps, the second of which is being served. Absent when there was none
    /// a moment ago.
    [[nodiscard]] std::optional<std::chrono::milliseconds> sinceFirst() const;

private:
    void note(const Event &event);

    std::optional<qint64> lastAt_; ///< on the clock of the events
    std::optional<std::chrono::milliseconds> gap_; ///< before the last press
    QElapsedTimer sinceLast_;
    std::unique_ptr<EventMonitorHandle> global_;
    std::unique_ptr<EventMonitorHandle> local_;
};

} // namespace vellumo

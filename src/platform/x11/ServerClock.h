// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/ServerTime.h"
#include <QElapsedTimer>
#include <algorithm>

namespace vellumo {

/// Estimates the X server's current time from the timestamps of its events. The estimate lags by
/// the delay of the quickest event so far, which is well below a millisecond when the event loop is
/// idle.
class ServerClock {
public:
    ServerClock() { running_.start(); }

    /// Returns the widened timestamp of an event. Call it when the event is processed.
    qint64 note(quint32 time)
    {
        const qint64 wide = time_.widen(time);
        const qint64 offset = wide - running_.elapsed();
        offset_ = std::max(offset_.value_or(offset), offset);
        return wide;
    }

    /// Returns the estimated time; starts at 0 until an event is processed.
    [[nodiscard]] qint64 now() const { return offset_.value_or(0) + running_.elapsed(); }

private:
    ServerTime time_;
    QElapsedTimer running_;
    std::optional<qint64> offset_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/ServerTime.h"
#include <QElapsedTimer>
#include <algorithm>

namespace vellumo {

/// Estimates what time it is on the X server from the times that its events carry. The estimate
/// runs late by the delay of the quickest event so far, which is well below a millisecond when the
/// event loop is idle.
class ServerClock {
public:
    ServerClock() { running_.start(); }

    /// The wide form of an event's time. To be called when the event is looked at.
    qint64 note(quint32 time)
    {
        const qint64 wide = time_.widen(time);
        const qint64 offset = wide - running_.elapsed();
        offset_ = std::max(offset_.value_or(offset), offset);
        return wide;
    }

    /// 0 at first as long as no event was looked at.
    [[nodiscard]] qint64 now() const { return offset_.value_or(0) + running_.elapsed(); }

private:
    ServerTime time_;
    QElapsedTimer running_;
    std::optional<qint64> offset_;
};

} // namespace vellumo

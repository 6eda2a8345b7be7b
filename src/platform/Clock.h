// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <chrono>
#include <functional>

namespace vellumo {

/// Wall-clock time and timers, injected so that tests control the time. Main thread only.
class Clock {
public:
    virtual ~Clock() = default;

    /// Returns the seconds, with fraction, since 2001-01-01 00:00:00 UTC.
    [[nodiscard]] virtual double secondsSinceReferenceDate() const = 0;

    /// Runs `action` once on the main thread after `delay`, unless `context` is destroyed first.
    virtual void after(std::chrono::milliseconds delay, QObject *context,
                       std::function<void()> action) = 0;
};

} // namespace vellumo

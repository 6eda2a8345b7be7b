// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"

namespace vellumo {

/// The system's wall clock, and timers of the main thread's event loop.
class SystemClock : public Clock {
public:
    [[nodiscard]] double secondsSinceReferenceDate() const override;
    void after(std::chrono::milliseconds delay, QObject *context,
               std::function<void()> action) override;
};

} // namespace vellumo

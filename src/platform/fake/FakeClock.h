// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Clock.h"
#include <QList>
#include <QPointer>

namespace vellumo {

/// A clock that moves only in advance().
class FakeClock : public Clock {
public:
    double now = 800000000.5;

    [[nodiscard]] double secondsSinceReferenceDate() const override { return now; }
    void after(std::chrono::milliseconds delay, QObject *context,
               std::function<void()> action) override;

    /// Moves the time and runs the actions that become due, in order of their due times.
    void advance(std::chrono::milliseconds time);

private:
    struct Timer {
        std::chrono::milliseconds due;
        QPointer<QObject> context;
        std::function<void()> action;
    };

    std::chrono::milliseconds elapsed_{0};
    QList<Timer> timers_;
};

} // namespace vellumo

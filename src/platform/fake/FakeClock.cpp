// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeClock.h"

#include <algorithm>

namespace vellumo {

void FakeClock::after(std::chrono::milliseconds delay, QObject *context,
                      std::function<void()> action)
{
    timers_.append({elapsed_ + delay, context, std::move(action)});
}

void FakeClock::advance(std::chrono::milliseconds time)
{
    const auto end = elapsed_ + time;
    while (true) {
        const auto next =
            std::min_element(timers_.begin(), timers_.end(),
                             [](const Timer &a, const Timer &b) { return a.due < b.due; });
        if (next == timers_.end() || next->due > end) {
            break;
        }
        const Timer timer = *next;
        timers_.erase(next);
        now += std::chrono::duration<double>(timer.due - elapsed_).count();
        elapsed_ = timer.due;
        if (timer.context) {
            timer.action();
        }
    }
    now += std::chrono::duration<double>(end - elapsed_).count();
    elapsed_ = end;
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/SystemClock.h"

#include <QTimer>

namespace vellumo {

double SystemClock::secondsSinceReferenceDate() const
{
    using namespace std::chrono;
    constexpr sys_days reference = 2001y / January / 1;
    return duration<double>(system_clock::now() - reference).count();
}

void SystemClock::after(std::chrono::milliseconds delay, QObject *context,
                        std::function<void()> action)
{
    QTimer::singleShot(delay, Qt::PreciseTimer, context, std::move(action));
}

} // namespace vellumo

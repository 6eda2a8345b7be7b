// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <chrono>
#include <thread>

namespace vellumo::test {

/// The time that a test waits for an event, long enough for a slow and busy machine.
constexpr std::chrono::seconds patience(15);

/// Runs the event loop until the condition holds or the time is over. Returns whether it holds.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition, std::chrono::milliseconds time = patience)
{
    QDeadlineTimer deadline(time);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

} // namespace vellumo::test

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"

namespace vellumo {

/// The window in front, as a compositor reports it that sees all windows. Windows of this process
/// are ignored. A window that gets the keyboard back after one of them, or after a time without a
/// window, has been in front all the time: compositors report no window before each other one.
class ReportedWindow {
public:
    /// Takes the window with this id as the one with the keyboard; of the report, the process and
    /// the names are used. Returns whether another window is in front.
    bool set(const QString &window, const FrontWindow &report);

    /// Takes no window as the one with the keyboard. Returns whether there was one.
    bool setNone();

    /// Returns the state; absent before the first report.
    [[nodiscard]] const std::optional<FrontWindow> &state() const { return state_; }

    /// Returns whether this was the last window in front.
    [[nodiscard]] bool isLast(const QString &window) const { return window == window_; }

private:
    std::optional<FrontWindow> state_;
    QString window_; ///< the last one of another process; empty before the first
    std::chrono::steady_clock::time_point since_; ///< when it came to the front
};

} // namespace vellumo

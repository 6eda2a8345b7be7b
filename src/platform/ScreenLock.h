// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Whether the session's screen is locked or covered by a screen saver. Main thread only.
class ScreenLock {
public:
    virtual ~ScreenLock() = default;

    /// Never blocks. False where the desktop does not say.
    [[nodiscard]] virtual bool isLocked() const = 0;
};

} // namespace vellumo

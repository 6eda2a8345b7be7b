// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Whether the session's screen is locked or covered by a screen saver. Main thread only.
class ScreenLock {
public:
    virtual ~ScreenLock() = default;

    /// Never blocks. Returns false where the desktop does not report it.
    [[nodiscard]] virtual bool isLocked() const = 0;
};

} // namespace vellumo

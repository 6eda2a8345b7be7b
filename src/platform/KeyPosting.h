// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Synthetic keys. Main thread only.
class KeyPosting {
public:
    virtual ~KeyPosting() = default;

    /// Makes the frontmost application copy its selection. Modifiers that the user holds are
    /// released first and not pressed again. Flag changes caused by these keys reach no monitor.
    /// False, and nothing is sent, when keys cannot be posted or the window is a terminal.
    virtual bool postCopy() = 0;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace vellumo {

/// Sends synthetic keys. Main thread only.
class KeyPosting {
public:
    virtual ~KeyPosting() = default;

    /// Returns whether copy keys would reach the process now: it has the keyboard, and its window
    /// is not a terminal.
    [[nodiscard]] virtual bool canPostCopy(qint64 process) = 0;

    /// Makes the process copy its selection. Modifiers that the user holds are released first and
    /// not pressed again. Flag changes caused by these keys reach no monitor. Returns false when
    /// nothing was sent because canPostCopy() is false, or when the keys may not have arrived.
    virtual bool postCopy(qint64 process) = 0;
};

} // namespace vellumo

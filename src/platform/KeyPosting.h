// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace vellumo {

/// Synthetic keys. Main thread only.
class KeyPosting {
public:
    virtual ~KeyPosting() = default;

    /// Whether copy keys would reach the process now: it has the keyboard, and its window is no
    /// terminal.
    [[nodiscard]] virtual bool canPostCopy(qint64 process) = 0;

    /// Makes the process copy its selection. Modifiers that the user holds are released first and
    /// not pressed again. Flag changes caused by these keys reach no monitor. False when nothing
    /// was sent, since canPostCopy() is false, or when it is not certain that the keys arrived.
    virtual bool postCopy(qint64 process) = 0;
};

} // namespace vellumo

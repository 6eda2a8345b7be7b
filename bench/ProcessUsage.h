// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace vellumo::bench {

/// Resources used by a process since its start, all threads together.
struct Usage {
    double processorMs = 0;
    double wakeUps = 0;
};

[[nodiscard]] Usage usageOf(qint64 process);

/// Returns the current memory of a process in megabytes.
struct Memory {
    double resident = 0;
    double privateDirty = 0;
};

[[nodiscard]] Memory memoryOf(qint64 process);

} // namespace vellumo::bench

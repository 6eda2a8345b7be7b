// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Makes the heap return large blocks to the system as soon as they are freed, and limits it to two
/// arenas for all threads. Call it before the first large allocation. Does nothing where the C
/// library has no such settings.
void returnFreedMemory();

} // namespace vellumo

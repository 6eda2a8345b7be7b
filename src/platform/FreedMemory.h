// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Makes the heap return large blocks to the system as soon as they are freed, and share two arenas
/// among all threads. Call it before the first allocation of size. Does nothing where the C library
/// has no such settings.
void returnFreedMemory();

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/FreedMemory.h"

#include <cstdlib>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace vellumo {

void returnFreedMemory()
{
#if defined(__GLIBC__)
    // By default glibc raises both thresholds to the largest block that was ever freed: after some
    // saves of a notes file of several megabytes, freed blocks of that size would stay in the
    // process.
    constexpr int largeBlock = 256 * 1024;
    constexpr int arenas = 2;
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    mallopt(M_TRIM_THRESHOLD, largeBlock);
    mallopt(M_ARENA_MAX, arenas);
#endif
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Files that describe applications to the desktop.

#include "Fuzzing.h"
#include "platform/xdg/DesktopEntry.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto entry =
        parseDesktopEntry(bytes(data, size), {QStringLiteral("de_AT"), QStringLiteral("de")});
    require(!entry || !entry->executable.contains(u'/'), "an executable is a file's name");
    return 0;
}

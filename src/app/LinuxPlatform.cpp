// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/LinuxPlatform.h"

namespace vellumo {

LinuxPlatform::LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent)
    : accessibility_(defaults, consent,
                     [this](qint64 pid) { return x11_.workspace().windowTitle(pid); })
{
}

} // namespace vellumo

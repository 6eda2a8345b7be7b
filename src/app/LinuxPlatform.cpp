// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/LinuxPlatform.h"

namespace vellumo {

LinuxPlatform::LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent)
    : accessibility_(defaults, consent,
                     [this](qint64 pid) { return x11_.workspace().windowTitle(pid); })
{
    if (sessionBus().connection()) {
        followPortal();
    } else {
        QObject::connect(&sessionBus(), &SessionBus::opened, &appearance_,
                         [this] { followPortal(); });
    }
}

void LinuxPlatform::followPortal()
{
    if (const auto bus = sessionBus().connection()) {
        appearance_.follow(*bus);
    }
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/LinuxPlatform.h"

namespace vellumo {

LinuxPlatform::LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent)
    : accessibility_(defaults, consent,
                     [this](qint64 pid) { return x11_.workspace().windowTitle(pid); })
{
    screenLock_.followLogins();
    if (sessionBus().connection()) {
        followSession();
    } else {
        QObject::connect(&sessionBus(), &SessionBus::opened, &appearance_,
                         [this] { followSession(); });
    }
}

void LinuxPlatform::followSession()
{
    if (const auto bus = sessionBus().connection()) {
        appearance_.follow(*bus);
        screenLock_.followSession(*bus);
    }
}

} // namespace vellumo

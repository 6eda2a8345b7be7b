// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/LinuxPlatform.h"

#include "app/ModuleFile.h"

using namespace Qt::StringLiterals;

namespace vellumo {

LinuxPlatform::LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent)
    : accessibility_(defaults, consent,
                     [this](qint64 pid) { return x11_.workspace().windowTitle(pid); })
    , secrets_(sessionBus(), moduleFile(u"secretcipher.so"_s))
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

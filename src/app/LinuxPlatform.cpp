// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/LinuxPlatform.h"

#include "app/ModuleFile.h"
#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace vellumo {

LinuxPlatform::LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent)
    : accessibility_(
        {.session = sessionBus_,
         .defaults = defaults,
         .settings = {.consent = settings::accessibilityConsent.name.toString(),
                      .leftOff = settings::accessibilityLeftOff.name.toString()},
         .prompting = consent,
         .windowTitle = [this](qint64 pid) { return x11_.workspace().windowTitle(pid); }})
    , secrets_(sessionBus_, moduleFile(u"secretcipher.so"_s))
{
    screenLock_.followLogins();
    if (sessionBus_.connection()) {
        followSession();
    } else {
        QObject::connect(&sessionBus_, &SessionBus::opened, &appearance_,
                         [this] { followSession(); });
    }
}

void LinuxPlatform::followSession()
{
    if (const auto bus = sessionBus_.connection()) {
        appearance_.follow(*bus);
        screenLock_.followSession(*bus);
    }
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/DesktopReach.h"

namespace vellumo {

DesktopReach::DesktopReach(const QDBusConnection &bus, const QString &command)
    : tapSetting_(bus)
    , shortcut_(bus, command)
    , taps_(bus)
{
    connect(&tapSetting_, &DesktopChange::changed, this,
            [this] { taps_.setOn(tapSetting_.state() == DesktopChange::State::Made); });
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/UnresponsiveServices.h"

namespace vellumo {

void UnresponsiveServices::noteTimeout(const QString &service, std::chrono::milliseconds waited)
{
    until_.removeIf([](const auto &entry) { return entry.value().hasExpired(); });
    if (waited >= minTimeout) {
        until_.insert(service, QDeadlineTimer(memory));
    }
}

bool UnresponsiveServices::contains(const QString &service) const
{
    const auto entry = until_.constFind(service);
    return entry != until_.constEnd() && !entry->hasExpired();
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/UpdaterManager.h"

using namespace Qt::StringLiterals;

namespace vellumo {

UpdaterManager::UpdaterManager(QQmlEngine &engine) : alert_(engine) { }

UpdaterManager::~UpdaterManager() = default;

void UpdaterManager::checkForUpdates()
{
    if (controller) {
        controller->checkForUpdates();
        return;
    }
    alert_.show({.message = u"Updates unavailable"_s,
                 .informativeText = u"Automatic updates are disabled in development builds."_s});
}

} // namespace vellumo

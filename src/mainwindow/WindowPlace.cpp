// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/WindowPlace.h"

#include "settings/SettingsKeys.h"
#include "ui/OrdinaryWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace vellumo {

void restorePlace(QWindow &window, const DefaultsStore &defaults)
{
    const QRect stored = settings::mainWindowFrame.value(defaults);
    if (stored.isValid()) {
        window.resize(stored.size().expandedTo(window.minimumSize()));
    }
    const auto screens = QGuiApplication::screens();
    const auto screen = std::ranges::find_if(screens, [&stored](const QScreen *candidate) {
        return stored.isValid() && candidate->availableGeometry().contains(stored);
    });
    if (screen != screens.end()) {
        window.setPosition(stored.topLeft());
    } else {
        centreOnScreen(window);
    }
    if (settings::isMainWindowMaximized.value(defaults)) {
        window.setWindowStates(Qt::WindowMaximized);
    }
}

void storePlace(const QWindow &window, DefaultsStore &defaults)
{
    const Qt::WindowStates states = window.windowStates();
    settings::isMainWindowMaximized.set(defaults, states.testFlag(Qt::WindowMaximized));
    if (!(states & (Qt::WindowMaximized | Qt::WindowFullScreen))) {
        settings::mainWindowFrame.set(defaults, window.geometry());
    }
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/ActivationGuard.h"

#include "mainwindow/MainWindowController.h"
#include "platform/ApplicationActivation.h"
#include "platform/FloatingWindows.h"
#include "platform/Screens.h"

#include <algorithm>

namespace vellumo {

ActivationGuard::ActivationGuard(const ApplicationActivation &activation,
                                 const FloatingWindows &panels, const Screens &screens,
                                 MainWindowController &mainWindow)
    : panels_(panels)
    , screens_(screens)
    , mainWindow_(mainWindow)
{
    connect(&activation, &ApplicationActivation::willBecomeActive, this,
            &ActivationGuard::willBecomeActive);
    connect(&activation, &ApplicationActivation::didBecomeActive, this,
            &ActivationGuard::didBecomeActive);
}

void ActivationGuard::willBecomeActive()
{
    const QList<Rect> frames = panels_.visibleFrames();
    const Point pointer = screens_.pointerLocation();
    const bool isOnPanel = std::any_of(frames.begin(), frames.end(), [pointer](const Rect &frame) {
        return frame.contains(pointer);
    });
    if (isOnPanel) {
        mainWindow_.hideForPanelActivation();
    }
}

void ActivationGuard::didBecomeActive()
{
    if (mainWindow_.hiddenForPanelActivation) {
        mainWindow_.orderBack();
    }
}

} // namespace vellumo

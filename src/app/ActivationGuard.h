// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vellumo {

class ApplicationActivation;
class FloatingWindows;
class MainWindowController;
class Screens;

/// Keeps the main window from jumping in front of what is being read when a click on a floating
/// panel brings the whole application to the front.
class ActivationGuard : public QObject {
    Q_OBJECT

public:
    /// All must outlive the guard.
    ActivationGuard(const ApplicationActivation &activation, const FloatingWindows &panels,
                    const Screens &screens, MainWindowController &mainWindow);

private:
    void willBecomeActive();
    void didBecomeActive();

    const FloatingWindows &panels_;
    const Screens &screens_;
    MainWindowController &mainWindow_;
};

} // namespace vellumo

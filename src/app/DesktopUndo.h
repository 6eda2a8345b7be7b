// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/shortcuts/DesktopReach.h"

namespace vellumo {

/// Undoes what vellumo has added to the settings of the desktop that runs: for the time after it is
/// removed. Needs an application object.
class DesktopUndo {
public:
    explicit DesktopUndo(const QDBusConnection &bus);

    /// Runs the application's event loop until all is undone, for 10 seconds at most. Returns
    /// whether all is undone.
    [[nodiscard]] bool run();

private:
    void look(DesktopChange *change);
    void end(DesktopChange *change, bool isUndone);

    DesktopReach reach_;
    QList<DesktopChange *> pending_;
    QList<DesktopChange *> undone_; ///< those asked to undo
    bool hasFailed_ = false;
};

/// Removes the start at login. Returns whether there is none any more that vellumo has set up.
[[nodiscard]] bool undoLoginStart();

} // namespace vellumo

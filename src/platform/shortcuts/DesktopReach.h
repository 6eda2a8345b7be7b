// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/shortcuts/DesktopTaps.h"
#include "platform/shortcuts/GnomeShortcut.h"
#include "platform/shortcuts/KWinTapSetting.h"

namespace vellumo {

/// What the settings of a desktop can do for windows in which vellumo does not hear the Alt key.
/// Main thread only.
class DesktopReach : public QObject {
    Q_OBJECT

public:
    /// `command` is the command line that explains the selection.
    DesktopReach(const QDBusConnection &bus, const QString &command);

    /// Makes the desktop report taps in every window.
    [[nodiscard]] DesktopChange &tapSetting() { return tapSetting_; }
    [[nodiscard]] DesktopChange &shortcut() { return shortcut_; }
    /// Reports taps while tapSetting() is made.
    [[nodiscard]] TapSource &taps() { return taps_; }

private:
    KWinTapSetting tapSetting_;
    GnomeShortcut shortcut_;
    DesktopTaps taps_;
};

} // namespace vellumo

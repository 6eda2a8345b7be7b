// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/shortcuts/ChosenChange.h"
#include "platform/shortcuts/DesktopTaps.h"
#include "platform/shortcuts/GnomeExtension.h"
#include "platform/shortcuts/GnomeShortcut.h"
#include "platform/shortcuts/KGlobalAccelAction.h"
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
    /// Lets GNOME Shell report taps in every window, to ShellCompanion.
    [[nodiscard]] DesktopChange &extension() { return extension_; }
    [[nodiscard]] DesktopChange &shortcut() { return shortcut_; }
    /// Replaces a change for an earlier version of the desktop, which the user has agreed to, by
    /// the one for the version that runs, now and whenever the desktop is started.
    void replaceOutdated();
    /// Returns all changes that this desktop may have, each of which may be made.
    [[nodiscard]] QList<DesktopChange *> changes();
    /// Reports taps while tapSetting() is made.
    [[nodiscard]] TapSource &taps() { return taps_; }

Q_SIGNALS:
    /// Emitted when the user presses a shortcut that does not run the command.
    void explainRequested();

private:
    void replaceEntry();

    KWinVersion kwin_;
    KWinTapSetting kwinEntry_;
    KGlobalAccelAction loneAlt_;
    ChosenChange tapSetting_;
    GnomeExtension extension_;
    GnomeShortcut gnomeShortcut_;
    KGlobalAccelAction kdeShortcut_;
    ChosenChange shortcut_;
    DesktopTaps taps_;
};

} // namespace vellumo

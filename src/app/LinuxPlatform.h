// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ClipboardText.h"
#include "platform/atspi/AtspiAccessibility.h"
#include "platform/dbus/PortalAppearance.h"
#include "platform/dbus/ScreenLockWatch.h"
#include "platform/dbus/SecretServiceItems.h"
#include "platform/dbus/SessionBus.h"
#include "platform/shortcuts/DesktopReach.h"
#include "platform/wayland/WaylandSession.h"
#include "platform/windowing/FieldPasting.h"
#include "platform/x11/X11Backend.h"
#include "platform/x11/X11ClipboardText.h"
#include <functional>

namespace vellumo {

class ConsentPrompting;
class DefaultsStore;

/// Implements the platform's interfaces for a Linux desktop under X11, or in a Wayland session
/// through XWayland. Each other system gets a class of this form. Needs the application object.
class LinuxPlatform {
public:
    /// Both must outlive the platform.
    LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent);

    [[nodiscard]] EventMonitoring &events();
    [[nodiscard]] Workspace &workspace();
    [[nodiscard]] Pasteboard &pasteboard();
    [[nodiscard]] PrimarySelection &primarySelection();
    [[nodiscard]] KeyPosting &keys();
    /// Asks the X server, which has the keyboard's layout in a Wayland session, too.
    [[nodiscard]] KeyboardFace keyboardFace() { return x11_.keyboardFace(); }
    [[nodiscard]] Accessibility &accessibility() { return accessibility_; }
    [[nodiscard]] DesktopAppearance &appearance() { return appearance_; }
    [[nodiscard]] const ScreenLock &screenLock() const { return screenLock_; }
    [[nodiscard]] SecretItems &secrets() { return secrets_; }
    [[nodiscard]] SessionBus &sessionBus() { return sessionBus_; }
    /// Returns whether the session itself reports double taps in every window.
    [[nodiscard]] bool hearsEveryTap() const { return !wayland_ || wayland_->hearsEveryTap(); }
    /// Returns the ways in which this session works now.
    [[nodiscard]] SessionRoads roads();
    /// Returns null in an X11 session.
    [[nodiscard]] const WaylandSession *waylandSession() const { return wayland_.get(); }
    /// Returns what the desktop's settings can do in a Wayland session; null in an X11 session, and
    /// before the session bus is open.
    [[nodiscard]] DesktopReach *reach() { return reach_.get(); }
    /// Called when the user presses the desktop's shortcut that explains the selection.
    std::function<void()> onShortcut = [] {};

private:
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier);
    void followSession();

    X11Backend x11_;
    SessionBus sessionBus_;
    AtspiAccessibility accessibility_;
    std::unique_ptr<DesktopReach> reach_;
    std::unique_ptr<WaylandSession> wayland_; ///< null in an X11 session
    PortalAppearance appearance_;
    ScreenLockWatch screenLock_;
    SecretServiceItems secrets_;
    X11ClipboardText clipboardText_; ///< in an X11 session
    FieldPasting pasting_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/Workspace.h"
#include <QTimer>

namespace vellumo {

class X11Workspace;

/// The applications of a Wayland session: those of X11 windows, which XWayland shows, and the
/// native ones, which another source reports. XWayland has an active window while an X11 window has
/// the keyboard, and under sway sometimes also later, so that a compositor's report is preferred.
/// While an application that the source does not see is in front, the
/// frontmost application has process 0 and no name.
class WaylandWorkspace : public Workspace {
    Q_OBJECT

public:
    /// Both must outlive this object.
    WaylandWorkspace(X11Workspace &x11, FrontWindows &native);

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
    void skipPastActivations() override;
    [[nodiscard]] bool isScreenCovered() override;
    [[nodiscard]] bool isOwnWindowActive() const override;
    [[nodiscard]] QString ownSelectedText() const override;
    bool openUrl(const QUrl &url) override;
    bool openFolder(const QString &path) override;
    bool openAccessibilitySettings() override;

    /// Returns the title of the active window; absent if it does not belong to the process.
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier);

private:
    [[nodiscard]] bool isX11WindowInFront();
    void look();
    void announceSoon();
    void announce();
    [[nodiscard]] bool isReportedLate() const;
    [[nodiscard]] RunningApplication describe(const FrontWindow &window) const;

    X11Workspace &x11_;
    FrontWindows &native_;
    std::optional<FrontWindow> window_; ///< the native window that front_ describes
    bool wasDescribed_ = false; ///< with the installed applications
    std::optional<RunningApplication> front_;
    std::optional<qint64> announcedProcess_;
    bool wasUnknown_ = false; ///< at the last skipPastActivations(): no reported window was active
    std::chrono::steady_clock::time_point skippedAt_;
    QTimer announcing_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Workspace.h"
#include "platform/x11/X11Windows.h"
#include "platform/xdg/DesktopEntries.h"
#include <QTimer>
#include <optional>
#include <xcb/xcb.h>

namespace vellumo {

class X11Connection;

/// Follows the active window. The application's name is looked up when the event loop is idle after
/// an activation, so that frontmostApplication() has it ready, and again when the window changes
/// its properties: some set them only after they are shown.
class X11Workspace : public Workspace {
    Q_OBJECT

public:
    /// `connection` and `windows` must outlive this object; the connection must have no other event
    /// handler.
    X11Workspace(X11Connection &connection, X11Windows &windows, DesktopEntries entries);
    ~X11Workspace() override;
    Q_DISABLE_COPY_MOVE(X11Workspace)

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override;
    void skipPastActivations() override;
    [[nodiscard]] bool isScreenCovered() override { return windows_.isScreenCovered(); }
    [[nodiscard]] bool isOwnWindowActive() const override;
    [[nodiscard]] QString ownSelectedText() const override;
    bool openUrl(const QUrl &url) override;
    bool openFolder(const QString &path) override;
    bool openAccessibilitySettings() override;

    /// Returns whether the active window is one of another process that the server knows.
    [[nodiscard]] bool isForeignWindowActive();

    /// Returns whether the active window belongs to the process, or names it.
    [[nodiscard]] bool isActiveWindowOf(qint64 processIdentifier);

    /// Returns the installed applications, which are read when the event loop is idle.
    [[nodiscard]] const DesktopEntries &entries() const { return entries_; }
    void refreshEntriesWhenIdle();

    /// Returns the title of the active window; absent if it does not belong to the process.
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier);

Q_SIGNALS:
    /// Emitted for every change of the active window, also when there is none any more.
    void activeWindowChanged();

private:
    void handleEvent(const xcb_generic_event_t &event);
    void look();
    void announce();
    void resolve();
    void watch(xcb_window_t window);
    [[nodiscard]] bool isNaming(const xcb_property_notify_event_t &event);
    [[nodiscard]] bool isForeign() const;
    [[nodiscard]] bool isPlaceholder(xcb_window_t window, std::optional<qint64> process);
    [[nodiscard]] std::optional<qint64> processOf(xcb_window_t window) const;

    X11Connection &connection_;
    X11Windows &windows_;
    DesktopEntries entries_;
    QTimer idle_;
    xcb_window_t activeWindow_ = XCB_WINDOW_NONE;
    std::optional<qint64> activeProcess_;
    bool isNoneActive_ = false; ///< the active window is a placeholder
    xcb_window_t foreignWindow_ = XCB_WINDOW_NONE;
    std::optional<qint64> foreignProcess_; ///< process of the last active foreign window
    std::optional<qint64> announcedProcess_;
    xcb_window_t watchedWindow_ = XCB_WINDOW_NONE;
    std::optional<RunningApplication> resolved_; ///< names for foreignWindow_
    QString resolvedId_; ///< property of that window when it was resolved, like resolvedClass_
    WindowClass resolvedClass_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <xcb/xcb.h>

namespace vellumo {

class X11Connection;

/// The two parts of a window's WM_CLASS, either of which may be empty.
struct WindowClass {
    QByteArray instance;
    QByteArray className;
    friend bool operator==(const WindowClass &, const WindowClass &) = default;
};

/// Queries other clients' windows. Results are empty when the window no longer exists.
class X11Windows {
public:
    /// `connection` must outlive this object.
    explicit X11Windows(X11Connection &connection) : connection_(connection) { }

    /// Returns the active window that the window manager reports, which may no longer exist.
    /// Without such a window manager, returns focusedTopLevel().
    [[nodiscard]] xcb_window_t activeWindow();

    /// Returns whether the last result of activeWindow() came from a window manager.
    [[nodiscard]] bool isManaged() const { return managed_; }

    /// Returns the outermost ancestor of the focused window that names its application.
    [[nodiscard]] xcb_window_t focusedTopLevel();

    /// Returns the process whose connection made this window; where the server does not know it,
    /// the process that the window names. Absent for a window of another machine.
    [[nodiscard]] std::optional<qint64> process(xcb_window_t window);

    /// Returns the process that the window names, in a sandbox by another number than outside.
    [[nodiscard]] std::optional<qint64> namedProcess(xcb_window_t window);

    /// Returns the process whose connection made this window, as the server knows it.
    [[nodiscard]] std::optional<qint64> clientProcess(xcb_window_t window);

    /// Returns the window manager's process, which in a Wayland session is the compositor. Absent
    /// without a window manager that names its window.
    [[nodiscard]] std::optional<qint64> managerProcess();

    [[nodiscard]] bool exists(xcb_window_t window);

    /// Returns whether the topmost window, except for ours, the window manager's and the
    /// compositor's, is unmanaged and covers the whole screen.
    [[nodiscard]] bool isScreenCovered();

    [[nodiscard]] WindowClass windowClass(xcb_window_t window);
    [[nodiscard]] QString title(xcb_window_t window);
    [[nodiscard]] QString gtkApplicationId(xcb_window_t window);

private:
    [[nodiscard]] bool isOfAnotherMachine(xcb_window_t window);
    [[nodiscard]] QByteArray property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type);

    X11Connection &connection_;
    bool managed_ = false;
};

} // namespace vellumo

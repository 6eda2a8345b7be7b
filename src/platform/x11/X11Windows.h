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

/// Questions about other clients' windows. Every answer is empty when the window has gone.
class X11Windows {
public:
    /// `connection` must outlive this object.
    explicit X11Windows(X11Connection &connection) : connection_(connection) { }

    /// The window that the window manager calls active; some leave the number of a window that has
    /// gone. Without such a window manager, focusedTopLevel().
    [[nodiscard]] xcb_window_t activeWindow();

    /// Whether the last activeWindow() came from a window manager.
    [[nodiscard]] bool isManaged() const { return managed_; }

    /// The outermost window around the one with the keyboard that says to what application it
    /// belongs.
    [[nodiscard]] xcb_window_t focusedTopLevel();

    /// The process whose connection made this window; where the server does not know it, the one
    /// that the window names. Absent for a window that another machine shows here.
    [[nodiscard]] std::optional<qint64> process(xcb_window_t window);

    /// The process whose connection made this window, as the server knows it.
    [[nodiscard]] std::optional<qint64> clientProcess(xcb_window_t window);

    [[nodiscard]] bool exists(xcb_window_t window);

    /// Whether the topmost window, not counting ours, the window manager's and the compositor's, is
    /// one that covers the whole screen and is under no window manager's control.
    [[nodiscard]] bool isScreenCovered();

    [[nodiscard]] WindowClass windowClass(xcb_window_t window);
    [[nodiscard]] QString title(xcb_window_t window);
    [[nodiscard]] QString gtkApplicationId(xcb_window_t window);

private:
    [[nodiscard]] bool isOfAnotherMachine(xcb_window_t window);
    [[nodiscard]] std::optional<qint64> managerProcess();
    [[nodiscard]] QByteArray property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type);

    X11Connection &connection_;
    bool managed_ = false;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QtGui/qwindowdefs.h>

/// Requests of panels to the X server and the window manager beyond those of Qt. Windows are
/// identified by their X id. Requests use Qt's connection, to stay in order with its drawing.
/// Without an X server all functions do nothing.
namespace vellumo::x11 {

[[nodiscard]] bool isAvailable();

/// Keeps a window out of the task bar and the pager from its mapping on; to be called right before.
/// GNOME announces other windows that it maps without giving them the keyboard.
void leaveOutOfLists(WId window);

/// Asks compositors such as picom, which give every window a shadow, for none: a panel draws its
/// own within its window.
void refuseShadow(WId window);

/// Keeps a mapped window above others on every workspace and out of the task bar and the pager.
void floatEverywhere(WId window);

/// Returns the active window, or 0.
[[nodiscard]] WId activeWindow();

[[nodiscard]] bool isFullScreen(WId window);

/// Returns whether a mouse button is pressed in any window. Costs a round trip.
[[nodiscard]] bool isButtonHeld();

/// Makes a mapped window transient for another one, so that it is stacked above it; 0 undoes it.
void setTransientFor(WId window, WId parent);

/// Requests the keyboard in the way of a task bar, which window managers do not refuse.
void activate(WId window);

/// Requests the unmapping of a managed window.
void withdraw(WId window);

/// Sets the colour with which the server fills new areas of a window before they are painted: a
/// 32-bit ARGB pixel.
void setBackground(WId window, quint32 pixel);

/// Keeps the content at the bottom right when the window is resized, until it is repainted.
void keepContentAtBottomRight(WId window);

/// Sets the visible part of a window, in its own pixels; an empty list means all of it.
void setBoundingShape(WId window, const QList<QRect> &rects);

/// Sets the part of a window that takes clicks, in its own pixels; an empty list passes all clicks
/// on.
void setInputShape(WId window, const QList<QRect> &rects);

} // namespace vellumo::x11

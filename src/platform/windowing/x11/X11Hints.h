// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QtGui/qwindowdefs.h>

/// What a panel sends to the X server and the window manager beyond what Qt does. Windows are named
/// by their X id. Requests go over Qt's own connection, so they keep their order with its drawing.
/// Everything is ignored where there is no X server.
namespace vellumo::x11 {

[[nodiscard]] bool isAvailable();

/// Puts a mapped window above others on every workspace and keeps it off the task bar and the
/// pager.
void floatEverywhere(WId window);

/// The window that has the keyboard, or 0.
[[nodiscard]] WId activeWindow();

[[nodiscard]] bool isFullScreen(WId window);

/// Whether a mouse button is down now, whichever window holds it. Costs a round trip.
[[nodiscard]] bool isButtonHeld();

/// Ties a mapped window to another one, so that it is stacked above it; 0 unties it.
void setTransientFor(WId window, WId parent);

/// Asks for the keyboard as a task bar does, which window managers do not refuse.
void activate(WId window);

/// Asks for a window to be unmapped, as it is done for one that the window manager knows.
void withdraw(WId window);

/// What the server fills new areas of a window with before they are painted: a 32-bit ARGB pixel.
void setBackground(WId window, quint32 pixel);

/// When the window is resized, the content stays at its bottom right until it is repainted.
void keepContentAtBottomRight(WId window);

/// The visible part of a window, in its own pixels; an empty list means all of it.
void setBoundingShape(WId window, const QList<QRect> &rects);

/// The part of a window that takes clicks, in its own pixels; an empty list lets all through.
void setInputShape(WId window, const QList<QRect> &rects);

} // namespace vellumo::x11

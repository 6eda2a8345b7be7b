// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Geometry.h"
#include <QGuiApplication>
#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QScreen>
#include <cmath>

namespace vellumo {

/// Desktop coordinates to and from Qt's: there the origin is somewhere at the top left and y grows
/// downwards. `main` is always mainGeometry(). Both sides count in
/// device-independent units, and Qt alone scales them, per screen.

/// Empty while no screen is connected.
[[nodiscard]] inline QRect mainGeometry()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry() : QRect();
}

[[nodiscard]] inline Rect toDesktop(const QRectF &rect, const QRect &main)
{
    return {rect.x() - main.x(), main.y() + main.height() - rect.y() - rect.height(), rect.width(),
            rect.height()};
}

[[nodiscard]] inline QRectF toQt(const Rect &rect, const QRect &main)
{
    return {rect.x + main.x(), main.y() + main.height() - rect.y - rect.height, rect.width,
            rect.height};
}

/// A pixel as the point of its bottom-left corner, so that a pixel inside a rectangle lies inside
/// it here as well, at every edge.
[[nodiscard]] inline Point toDesktop(const QPoint &pixel, const QRect &main)
{
    return {static_cast<double>(pixel.x() - main.x()),
            static_cast<double>(main.y() + main.height() - 1 - pixel.y())};
}

/// The whole units that a rectangle takes; its top-left corner is rounded, its size never shrinks.
[[nodiscard]] inline QRect wholeUnits(const QRectF &rect)
{
    return {static_cast<int>(std::lround(rect.x())), static_cast<int>(std::lround(rect.y())),
            static_cast<int>(std::ceil(rect.width())), static_cast<int>(std::ceil(rect.height()))};
}

} // namespace vellumo

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

/// Converts desktop coordinates to and from Qt's, whose origin is at the top left of the virtual
/// desktop and whose y grows downwards. `main` is always mainGeometry(). Both use
/// device-independent units; Qt scales them for each screen.

/// Returns the geometry of the main screen; empty while no screen is connected.
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

/// Returns the bottom-left corner of a pixel, so that a pixel inside a rectangle stays inside at
/// every edge.
[[nodiscard]] inline Point toDesktop(const QPoint &pixel, const QRect &main)
{
    return {static_cast<double>(pixel.x() - main.x()),
            static_cast<double>(main.y() + main.height() - 1 - pixel.y())};
}

/// Rounds a rectangle to whole units: the top-left corner is rounded, the size never shrinks.
[[nodiscard]] inline QRect wholeUnits(const QRectF &rect)
{
    return {static_cast<int>(std::lround(rect.x())), static_cast<int>(std::lround(rect.y())),
            static_cast<int>(std::ceil(rect.width())), static_cast<int>(std::ceil(rect.height()))};
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Screens.h"
#include <QList>
#include <algorithm>
#include <optional>

/// The geometry of the result panel, as pure functions in desktop coordinates.
namespace vellumo::panelGeometry {

constexpr double width = 520;
constexpr double minimumHeight = 96;
constexpr double bottomCornerRadius = 22;

/// Used when there is no screen.
constexpr Rect fallbackScreen{0, 0, 1200, 800};

/// The first screen that holds the point, otherwise the main screen.
[[nodiscard]] inline std::optional<Screen> screenAt(Point point, const QList<Screen> &screens,
                                                    const std::optional<Screen> &mainScreen)
{
    const auto found = std::find_if(screens.begin(), screens.end(), [point](const Screen &screen) {
        return screen.frame.contains(point);
    });
    return found != screens.end() ? *found : mainScreen;
}

/// How far content stays below the screen's top edge: under the camera housing or the menu bar.
[[nodiscard]] inline double topInset(const std::optional<Screen> &screen)
{
    if (!screen) {
        return 0;
    }
    if (screen->topSafeAreaInset > 0) {
        return screen->topSafeAreaInset;
    }
    return std::max(0.0, screen->frame.maxY() - screen->visibleFrame.maxY());
}

/// The tallest panel: as high as the screen's visible part, and never below the minimum.
[[nodiscard]] inline double maximumHeight(const std::optional<Screen> &screen)
{
    return std::max(minimumHeight, screen ? screen->visibleFrame.height : fallbackScreen.height);
}

[[nodiscard]] inline double heightFor(double fittingHeight, const std::optional<Screen> &screen)
{
    return std::clamp(fittingHeight, minimumHeight, maximumHeight(screen));
}

/// Centred at the screen's top edge.
[[nodiscard]] inline Rect frameOn(const std::optional<Screen> &screen, double height)
{
    const Rect bounds = screen ? screen->frame : fallbackScreen;
    return {bounds.midX() - (width / 2), bounds.maxY() - height, width, height};
}

/// Grown or shrunk downwards.
[[nodiscard]] inline Rect resized(const Rect &frame, double height)
{
    return {frame.x, frame.maxY() - height, frame.width, height};
}

/// A point inside the panel's top edge, by which its screen is found.
[[nodiscard]] inline Point anchor(const Rect &frame)
{
    return {frame.midX(), frame.maxY() - 1};
}

} // namespace vellumo::panelGeometry

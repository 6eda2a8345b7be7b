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

/// Returns the first screen that holds the point, otherwise the main screen.
[[nodiscard]] inline std::optional<Screen> screenAt(Point point, const QList<Screen> &screens,
                                                    const std::optional<Screen> &mainScreen)
{
    const auto found = std::find_if(screens.begin(), screens.end(), [point](const Screen &screen) {
        return screen.frame.contains(point);
    });
    return found != screens.end() ? *found : mainScreen;
}

/// Returns the distance of the content from the screen's top edge: below the camera housing or the
/// menu bar.
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

/// Returns the maximum height: that of the screen's visible part, but at least the minimum.
[[nodiscard]] inline double maximumHeight(const std::optional<Screen> &screen)
{
    return std::max(minimumHeight, screen ? screen->visibleFrame.height : fallbackScreen.height);
}

[[nodiscard]] inline double heightFor(double fittingHeight, const std::optional<Screen> &screen)
{
    return std::clamp(fittingHeight, minimumHeight, maximumHeight(screen));
}

/// Returns the frame centred at the screen's top edge.
[[nodiscard]] inline Rect frameOn(const std::optional<Screen> &screen, double height)
{
    const Rect bounds = screen ? screen->frame : fallbackScreen;
    return {bounds.midX() - (width / 2), bounds.maxY() - height, width, height};
}

/// The top of a screen that the window manager keeps free of panels, as far as it is known.
struct TopBar {
    Rect screenFrame;
    double height = 0;

    /// Returns the screen without its bar.
    [[nodiscard]] Screen removedFrom(Screen screen) const
    {
        if (screen.frame == screenFrame) {
            screen.frame.height -= height;
            screen.topSafeAreaInset = std::max(0.0, screen.topSafeAreaInset - height);
            screen.visibleFrame.height =
                std::min(screen.visibleFrame.maxY(), screen.frame.maxY()) - screen.visibleFrame.y;
        }
        return screen;
    }

    friend bool operator==(const TopBar &, const TopBar &) = default;
};

/// Returns the frame with another height and the same top edge.
[[nodiscard]] inline Rect resized(const Rect &frame, double height)
{
    return {frame.x, frame.maxY() - height, frame.width, height};
}

/// Returns a point inside the panel's top edge, which determines its screen.
[[nodiscard]] inline Point anchor(const Rect &frame)
{
    return {frame.midX(), frame.maxY() - 1};
}

} // namespace vellumo::panelGeometry

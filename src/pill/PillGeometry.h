// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Screens.h"
#include <QVariant>
#include <optional>

/// The geometry of the notes pill and its list, as pure functions in desktop coordinates.
namespace vellumo::pillGeometry {

constexpr double pillWidth = 118;
constexpr double pillHeight = 44;
constexpr double cornerRadius = 22;
constexpr double listWidth = 340;
constexpr double dragThreshold = 4;

/// Used as the main screen's visible frame when there is none.
constexpr Rect fallbackScreen{0, 0, 1200, 800};

[[nodiscard]] inline Rect visibleFrame(const std::optional<Screen> &mainScreen)
{
    return mainScreen ? mainScreen->visibleFrame : fallbackScreen;
}

[[nodiscard]] inline Rect pillAt(Point origin)
{
    return {origin.x, origin.y, pillWidth, pillHeight};
}

/// Returns the rectangle moved inside `visible` with a margin. If it does not fit, the upper bound
/// takes precedence.
[[nodiscard]] Rect clamped(const Rect &rect, const Rect &visible);

/// Returns the origin of a pill that was never moved.
[[nodiscard]] Point defaultOrigin(const Rect &visible);

/// Converts an origin to and from its stored form, a list of exactly two numbers, which a settings
/// file returns as text. Absent for anything else.
[[nodiscard]] std::optional<Point> storedOrigin(const QVariant &value);
[[nodiscard]] QVariant storableOrigin(Point origin);

/// Returns whether enough of the pill is on one of the screens to drag it.
[[nodiscard]] bool isReachable(const Rect &pill, const QList<Screen> &screens);

[[nodiscard]] double listHeight(qsizetype notes, double textScale = 1);

/// Returns the frame of a list of this height, which extends from `pill` to the left and upwards.
[[nodiscard]] Rect listFrame(const Rect &pill, double height, const Rect &visible);

constexpr int menuEntries = 3;
constexpr double menuWidth = 200;

[[nodiscard]] double menuHeight(double textScale);

/// Returns the frame of the menu, which takes the place of the pill as a list does.
[[nodiscard]] Rect menuFrame(const Rect &pill, double textScale, const Rect &visible);

/// Start and end of the demonstration's finger; at the end it touches the pill.
struct FingerPath {
    Rect from;
    Rect to;
};
[[nodiscard]] FingerPath fingerPath(const Rect &pill);

} // namespace vellumo::pillGeometry

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

/// Moved to keep a margin inside `visible`. Where it does not fit, the upper bound wins.
[[nodiscard]] Rect clamped(const Rect &rect, const Rect &visible);

/// The place of a pill that was never moved.
[[nodiscard]] Point defaultOrigin(const Rect &visible);

/// An origin as it is stored: a list of exactly two numbers. A settings file gives them back as
/// text. Anything else is no origin.
[[nodiscard]] std::optional<Point> storedOrigin(const QVariant &value);
[[nodiscard]] QVariant storableOrigin(Point origin);

/// Whether a person could get hold of the pill on one of the screens.
[[nodiscard]] bool isReachable(const Rect &pill, const QList<Screen> &screens);

[[nodiscard]] double listHeight(qsizetype notes);

/// The list of so many notes that grows from `pill`, leftwards and upwards.
[[nodiscard]] Rect listFrame(const Rect &pill, qsizetype notes, const Rect &visible);

/// The demonstration's finger glides from one to the other, and ends touching the pill.
struct FingerPath {
    Rect from;
    Rect to;
};
[[nodiscard]] FingerPath fingerPath(const Rect &pill);

} // namespace vellumo::pillGeometry

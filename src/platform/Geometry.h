// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// A point in desktop coordinates: device-independent points, the origin at the bottom left of the
/// main screen, y growing upwards. Only platform/windowing uses Qt's coordinates, with the origin
/// at the top left.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point &, const Point &) = default;
};

/// A rectangle in the coordinates of Point; (x, y) is its bottom-left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double minX() const { return x; }
    [[nodiscard]] double midX() const { return x + (width / 2); }
    [[nodiscard]] double maxX() const { return x + width; }
    [[nodiscard]] double minY() const { return y; }
    [[nodiscard]] double midY() const { return y + (height / 2); }
    [[nodiscard]] double maxY() const { return y + height; }

    /// Half open: the left and bottom edges belong to the rectangle, the right and top ones do not.
    [[nodiscard]] bool contains(Point point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QRectF>

namespace vellumo {

/// A rectangle whose upper and lower corners are rounded, as bands of whole pixels from top to
/// bottom: what a window's shape is made of where nothing blends its corners. In pixels; a pixel
/// belongs to the shape when its centre does.
[[nodiscard]] QList<QRect> roundedBands(const QRect &rect, double topRadius, double bottomRadius);

/// A logical rectangle in the pixels of a window with this scale factor.
[[nodiscard]] QRect toPixels(const QRectF &rect, double scale);

/// `frame` with a shadow's margin around it, as far as it stays on `screen`. The frame itself is
/// never cut.
[[nodiscard]] QRect withShadowMargin(const QRect &frame, int margin, const QRect &screen);

} // namespace vellumo

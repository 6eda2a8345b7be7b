// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QRectF>

namespace vellumo {

/// Returns a rectangle with rounded corners as bands of whole pixels from top to bottom, for the
/// shape of a window whose corners are not blended. In pixels; a pixel belongs to the shape if its
/// centre does.
[[nodiscard]] QList<QRect> roundedBands(const QRect &rect, double topRadius, double bottomRadius);

/// Converts a logical rectangle to pixels of a window with this scale factor.
[[nodiscard]] QRect toPixels(const QRectF &rect, double scale);

/// Returns `frame` with a shadow's margin, clipped to `screen`. The frame itself is never clipped.
[[nodiscard]] QRect withShadowMargin(const QRect &frame, int margin, const QRect &screen);

} // namespace vellumo

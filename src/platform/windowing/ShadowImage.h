// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QSizeF>

namespace vellumo {

/// How far a shadow extends beyond its panel on every side, in device-independent units.
constexpr int shadowMargin = 44;

/// The shadow of a rounded panel as a nine-patch, as small as its corners allow: the corners keep
/// their size, the middle is stretched.
struct ShadowImage {
    QImage image;
    QSizeF padding; ///< width of the unstretched borders, in device-independent units
};

/// Returns the size of the image for a shadow of `size`, including its margin, in
/// device-independent units. Shadows with the same image size can share an image.
[[nodiscard]] QSizeF shadowImageSize(const QSizeF &size, qreal cornerRadius);

[[nodiscard]] ShadowImage drawShadow(const QSizeF &imageSize, qreal topRadius, qreal bottomRadius,
                                     qreal scale);

} // namespace vellumo

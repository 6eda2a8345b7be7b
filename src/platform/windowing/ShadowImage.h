// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QSizeF>

namespace vellumo {

/// How far a shadow reaches beyond its panel on every side, device-independent.
constexpr int shadowMargin = 44;

/// The shadow of a rounded panel, drawn as small as its corners allow: they keep their size, and
/// its middle stretches to the size it was made for.
struct ShadowImage {
    QImage image;
    QSizeF padding; ///< how far the unstretched borders reach in, device-independent
};

/// The size, device-independent, of the image for a shadow of `size`, its margin included. Shadows
/// with the same image size share an image.
[[nodiscard]] QSizeF shadowImageSize(const QSizeF &size, qreal cornerRadius);

[[nodiscard]] ShadowImage drawShadow(const QSizeF &imageSize, qreal topRadius, qreal bottomRadius,
                                     qreal scale);

} // namespace vellumo

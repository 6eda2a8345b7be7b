// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/ShadowImage.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <vector>

namespace vellumo {

namespace {

constexpr qreal shadowOpacity = 0.4;
constexpr qreal shadowDrop = 10; ///< vertical offset from the panel
constexpr qreal blurRadius = 10; ///< radius of each of the three passes
constexpr qreal stretched = 4; ///< size of the stretched middle

/// Blurs one row or column; `at` points to its n values with the given stride.
void blurLine(uchar *at, int n, qsizetype stride, int radius, std::vector<uchar> &copy)
{
    copy.resize(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        copy[static_cast<size_t>(i)] = at[i * stride];
    }
    const int width = 2 * radius + 1;
    int sum = 0;
    const auto value = [&](int i) {
        return i < 0 || i >= n ? 0 : static_cast<int>(copy[static_cast<size_t>(i)]);
    };
    for (int i = -radius; i <= radius; ++i) {
        sum += value(i);
    }
    for (int i = 0; i < n; ++i) {
        at[i * stride] = static_cast<uchar>((sum + width / 2) / width);
        sum += value(i + radius + 1) - value(i - radius);
    }
}

/// Three box passes approximate a Gaussian.
void blur(QImage &mask, int radius)
{
    std::vector<uchar> copy;
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < mask.height(); ++y) {
            blurLine(mask.scanLine(y), mask.width(), 1, radius, copy);
        }
        for (int x = 0; x < mask.width(); ++x) {
            blurLine(mask.bits() + x, mask.height(), mask.bytesPerLine(), radius, copy);
        }
    }
}

QPainterPath roundedPath(const QRectF &rect, qreal top, qreal bottom)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(rect, bottom, bottom);
    const QRectF upper(rect.topLeft(), QSizeF(rect.width(), rect.height() / 2));
    if (top < bottom) {
        path.addRect(upper.adjusted(0, top, 0, 0));
        path.addRoundedRect(upper, top, top);
    }
    return path;
}

} // namespace

QSizeF shadowImageSize(const QSizeF &size, qreal cornerRadius)
{
    const qreal most = 2 * (shadowMargin + 3 * blurRadius + cornerRadius + shadowDrop) + stretched;
    return size.boundedTo({most, most});
}

ShadowImage drawShadow(const QSizeF &imageSize, qreal topRadius, qreal bottomRadius, qreal scale)
{
    const QSize pixels(static_cast<int>(std::ceil(imageSize.width() * scale)),
                       static_cast<int>(std::ceil(imageSize.height() * scale)));
    QImage mask(pixels, QImage::Format_Alpha8);
    mask.fill(0);
    {
        QPainter painter(&mask);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(scale, scale);
        const QRectF panel = QRectF(QPointF(), imageSize)
                                 .adjusted(shadowMargin, shadowMargin, -shadowMargin, -shadowMargin)
                                 .translated(0, shadowDrop);
        painter.fillPath(roundedPath(panel, topRadius, bottomRadius), Qt::black);
    }
    blur(mask, static_cast<int>(std::lround(blurRadius * scale)));

    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < pixels.height(); ++y) {
        const uchar *from = mask.constScanLine(y);
        auto *to = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            to[x] = qRgba(0, 0, 0, static_cast<int>(from[x] * shadowOpacity));
        }
    }
    image.setDevicePixelRatio(scale);
    return {image, (imageSize - QSizeF(stretched, stretched)) / 2};
}

} // namespace vellumo

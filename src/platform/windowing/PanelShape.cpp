// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/PanelShape.h"

#include <algorithm>
#include <cmath>

namespace vellumo {

namespace {

/// Returns how many pixels are cut at each side of a row whose centre is `depth` below the corner's
/// start.
int cutAt(double depth, double radius)
{
    if (depth >= radius) {
        return 0;
    }
    const double rise = radius - depth;
    return static_cast<int>(std::lround(radius - std::sqrt(radius * radius - rise * rise)));
}

} // namespace

QList<QRect> roundedBands(const QRect &rect, double topRadius, double bottomRadius)
{
    const double most = std::min(rect.width(), rect.height()) / 2.0;
    const double top = std::clamp(topRadius, 0.0, most);
    const double bottom = std::clamp(bottomRadius, 0.0, most);

    QList<QRect> bands;
    for (int row = 0; row < rect.height(); ++row) {
        const int cut = std::max(cutAt(row + 0.5, top), cutAt(rect.height() - row - 0.5, bottom));
        const QRect line(rect.x() + cut, rect.y() + row, rect.width() - 2 * cut, 1);
        if (line.width() <= 0) {
            continue;
        }
        if (!bands.isEmpty() && bands.constLast().x() == line.x()
            && bands.constLast().width() == line.width()) {
            bands.last().setHeight(bands.constLast().height() + 1);
        } else {
            bands << line;
        }
    }
    return bands;
}

QRect toPixels(const QRectF &rect, double scale)
{
    const auto edge = [scale](double value) {
        return static_cast<int>(std::lround(value * scale));
    };
    const int left = edge(rect.left());
    const int top = edge(rect.top());
    return {left, top, edge(rect.right()) - left, edge(rect.bottom()) - top};
}

QRect withShadowMargin(const QRect &frame, int margin, const QRect &screen)
{
    return frame | (frame.adjusted(-margin, -margin, margin, margin) & screen);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/PanelOutline.h"

#include "platform/windowing/PanelShape.h"
#include "platform/windowing/x11/X11Hints.h"
#include <QBitmap>
#include <QQuickWindow>

namespace vellumo {

PanelOutline::PanelOutline(QQuickWindow &window, const FloatingPanelStyle &style)
    : window_(window)
    , style_(style)
{
}

void PanelOutline::show(const QRect &picture, bool isBlended) const
{
    x11::setBoundingShape(window_.winId(), isBlended ? QList<QRect>{} : pictureBands(picture));
}

void PanelOutline::takeClicks(const QRect &frame) const
{
    const qreal scale = window_.devicePixelRatio();
    x11::setInputShape(window_.winId(),
                       style_.ignoresMouseEvents ? QList<QRect>{}
                                                 : QList<QRect>{toPixels(frame, scale)});
}

QList<QRect> PanelOutline::pictureBands(const QRect &picture) const
{
    if (style_.isShapedByContent) {
        return opaqueBands();
    }
    const qreal scale = window_.devicePixelRatio();
    return roundedBands(toPixels(picture, scale), style_.topCornerRadius * scale,
                        style_.bottomCornerRadius * scale);
}

QList<QRect> PanelOutline::opaqueBands() const
{
    QList<QRect> bands;
    const QRegion opaque(QBitmap::fromImage(window_.grabWindow().createAlphaMask()));
    for (const QRect &rect : opaque) {
        bands << rect;
    }
    return bands;
}

} // namespace vellumo

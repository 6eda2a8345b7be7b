// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include <QList>
#include <QRect>

class QQuickWindow;

namespace vellumo {

/// Which part of a panel's window can be seen and which takes clicks. Rectangles are in the window,
/// in Qt's coordinates.
class PanelOutline {
public:
    /// Both must outlive this object.
    PanelOutline(QQuickWindow &window, const FloatingPanelStyle &style);

    /// Shows all of the window where its edges are blended, else what the picture covers.
    void show(const QRect &picture, bool isBlended) const;

    /// Clicks outside of the frame go to the window behind.
    void takeClicks(const QRect &frame) const;

private:
    [[nodiscard]] QList<QRect> pictureBands(const QRect &picture) const;
    [[nodiscard]] QList<QRect> opaqueBands() const;

    QQuickWindow &window_;
    const FloatingPanelStyle &style_;
};

} // namespace vellumo

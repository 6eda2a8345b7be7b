// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include <QList>
#include <QRect>

class QQuickWindow;

namespace vellumo {

/// Sets which part of a panel's window is visible and which takes clicks. Rectangles are relative
/// to the window, in Qt's coordinates.
class PanelOutline {
public:
    /// Both must outlive this object.
    PanelOutline(QQuickWindow &window, const FloatingPanelStyle &style);

    /// Makes the whole window visible if its edges are blended, else only what the picture covers.
    void show(const QRect &picture, bool isBlended) const;

    /// Passes clicks outside of the frame to the window behind.
    void takeClicks(const QRect &frame) const;

private:
    [[nodiscard]] QList<QRect> pictureBands(const QRect &picture) const;
    [[nodiscard]] QList<QRect> opaqueBands() const;

    QQuickWindow &window_;
    const FloatingPanelStyle &style_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "pill/PillContainerView.h"

#include "pill/PillGeometry.h"
#include <cmath>

namespace vellumo {

void PillContainerView::setMode(Mode mode)
{
    if (std::exchange(mode_, mode) != mode) {
        Q_EMIT modeChanged();
    }
}

void PillContainerView::mouseDown(QPointF point)
{
    if (mode_ == Mode::Pill) {
        pressStart_ = point;
        dragging_ = false;
    }
}

void PillContainerView::mouseDragged(QPointF point)
{
    if (mode_ != Mode::Pill || dragging_ || !pressStart_) {
        return;
    }
    const QPointF way = point - *pressStart_;
    if (std::hypot(way.x(), way.y()) > pillGeometry::dragThreshold) {
        dragging_ = true;
        Q_EMIT dragStarted();
    }
}

void PillContainerView::mouseUp()
{
    const bool isClick = mode_ == Mode::Pill && pressStart_ && !dragging_;
    mouseCanceled();
    if (isClick) {
        press();
    }
}

void PillContainerView::mouseCanceled()
{
    dragging_ = false;
    pressStart_.reset();
}

void PillContainerView::mouseEntered()
{
    if (mode_ == Mode::List) {
        return;
    }
    if (onHover) {
        onHover(true);
    }
    Q_EMIT cursorChanged(true);
}

void PillContainerView::mouseExited()
{
    if (onHover) {
        onHover(false);
    }
    if (mode_ == Mode::Pill) {
        Q_EMIT cursorChanged(false);
    }
}

void PillContainerView::askForMenu()
{
    if (mode_ == Mode::Pill && !pressStart_) {
        Q_EMIT menuRequested();
    }
}

void PillContainerView::press()
{
    if (mode_ == Mode::Pill && onClick) {
        onClick();
    }
}

} // namespace vellumo

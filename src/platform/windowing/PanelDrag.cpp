// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/PanelDrag.h"

#include <QMouseEvent>
#include <utility>

namespace vellumo {

namespace {

bool isHeld(const QPointerEvent &event)
{
    const auto &mouse = static_cast<const QMouseEvent &>(event);
    return event.type() == QEvent::TouchUpdate
        || (event.type() == QEvent::MouseMove && mouse.buttons().testFlag(Qt::LeftButton));
}

} // namespace

PanelDrag::Step PanelDrag::cancelled()
{
    return {std::nullopt, std::exchange(grabbedAt_, std::nullopt).has_value()};
}

PanelDrag::Step PanelDrag::handle(const QPointerEvent &event, QPoint pointer, QPoint origin)
{
    const auto grabbedAt = grabbedAt_;
    if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::TouchBegin) {
        cancel(); // its release was never delivered
        pressedAt_ = pointer - origin;
        return {std::nullopt, grabbedAt.has_value()};
    }
    if (!grabbedAt) {
        return {};
    }
    if (isHeld(event)) {
        return {pointer - *grabbedAt, false};
    }
    cancel();
    const bool isReleased =
        event.type() == QEvent::MouseButtonRelease || event.type() == QEvent::TouchEnd;
    // a motion without the button is too late for the position of the release
    return {isReleased ? std::optional(pointer - *grabbedAt) : std::nullopt, true};
}

} // namespace vellumo

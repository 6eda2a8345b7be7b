// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/PanelDrag.h"

#include <QMouseEvent>
#include <utility>

namespace vellumo {

PanelDrag::Step PanelDrag::handle(const QMouseEvent &event, QPoint origin)
{
    const QPoint pointer = event.globalPosition().toPoint();
    const auto grabbedAt = grabbedAt_;
    if (event.type() == QEvent::MouseButtonPress) {
        cancel(); // its release never came
        pressedAt_ = pointer - origin;
        return {std::nullopt, grabbedAt.has_value()};
    }
    if (!grabbedAt) {
        return {};
    }
    const bool isReleased = event.type() == QEvent::MouseButtonRelease;
    if (!isReleased && event.buttons().testFlag(Qt::LeftButton)) {
        return {pointer - *grabbedAt, false};
    }
    cancel();
    // a motion without the button comes too late to tell where it was let go
    return {isReleased ? std::optional(pointer - *grabbedAt) : std::nullopt, true};
}

} // namespace vellumo

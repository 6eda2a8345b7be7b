// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <optional>

class QPointerEvent;

namespace vellumo {

/// Follows the pointer from a press to its release, which may never come. In Qt's coordinates.
class PanelDrag {
public:
    struct Step {
        std::optional<QPoint> origin; ///< where the dragged rectangle's top left corner belongs now
        bool isOver = false; ///< a drag that was under way has ended
    };

    /// What an event of a mouse, or of the first finger, means while the rectangle's top left
    /// corner is at `origin`.
    [[nodiscard]] Step handle(const QPointerEvent &event, QPoint origin);

    /// From the press that came last.
    void begin() { grabbedAt_ = pressedAt_; }
    void cancel() { grabbedAt_.reset(); }
    [[nodiscard]] bool isUnderWay() const { return grabbedAt_.has_value(); }

private:
    QPoint pressedAt_; ///< where in the rectangle, last
    std::optional<QPoint> grabbedAt_; ///< where in the rectangle, during a drag
};

} // namespace vellumo

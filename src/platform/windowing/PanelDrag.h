// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <optional>

class QPointerEvent;

namespace vellumo {

/// Follows the pointer from a press to its release, which may never be delivered. In Qt's
/// coordinates.
class PanelDrag {
public:
    struct Step {
        std::optional<QPoint> origin; ///< new top left corner of the dragged rectangle
        bool isOver = false; ///< the drag has ended
    };

    /// Processes an event of the mouse or the first finger at `pointer`. `origin` is the current
    /// top left corner of the rectangle.
    [[nodiscard]] Step handle(const QPointerEvent &event, QPoint pointer, QPoint origin);

    /// The system has cancelled the touch.
    [[nodiscard]] Step cancelled();

    /// Starts a drag from the last press.
    void begin() { grabbedAt_ = pressedAt_; }
    void cancel() { grabbedAt_.reset(); }
    [[nodiscard]] bool isUnderWay() const { return grabbedAt_.has_value(); }

private:
    QPoint pressedAt_; ///< position of the last press in the rectangle
    std::optional<QPoint> grabbedAt_; ///< position in the rectangle during a drag
};

} // namespace vellumo

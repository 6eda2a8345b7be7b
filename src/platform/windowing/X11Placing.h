// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windowing/PanelOutline.h"
#include "platform/windowing/PanelPlacing.h"
#include "platform/windowing/PanelWindow.h"
#include <QTimer>
#include <functional>

namespace vellumo {

/// Places panels under X11, through hints to the window manager, which may ignore them or be late.
/// Without an X server a panel is a plain frameless window that stays on top.
class X11Placing final : public PanelPlacing {
    Q_OBJECT

public:
    /// `isMoving` returns whether the program itself is moving the window step by step. All must
    /// outlive this object.
    X11Placing(QQuickWindow &window, const FloatingPanelStyle &style,
               std::function<bool()> isMoving);

    void setGeometry(const QRect &geometry) override;
    [[nodiscard]] QRect geometry() const override { return geometry_; }
    void show() override;
    void hide() override;
    [[nodiscard]] bool isShown() const override;
    void raise() override;
    void takeKeyboard() override;
    void setBlended(bool isBlended) override;
    void outline(const QRect &picture, bool isBlended) override;
    void takeClicks(const QRect &frame) override;
    [[nodiscard]] QPoint pointerPosition(const QPointerEvent &event) override;
    [[nodiscard]] bool seesClicksElsewhere() const override { return true; }
    [[nodiscard]] bool canAnimate(const QRect & /*from*/, const QRect & /*to*/) const override
    {
        return true;
    }
    [[nodiscard]] QRect dragArea(const QRect &picture) const override { return picture; }
    [[nodiscard]] int topLimit() const override { return topLimit_; }
    void finishDrag() override;
    void handle(const QEvent &event) override;

private:
    void handleExposure();
    void noticeMove();
    void followBar();
    void settle();
    void takeOverPosition();
    void scheduleKeyboardReturn();

    QQuickWindow &window_;
    const FloatingPanelStyle &style_;
    std::function<bool()> isMoving_;
    PanelOutline outline_;
    FullScreenLift lift_;
    QRect geometry_;
    QRect clickable_;
    QTimer settling_; ///< waits until the window manager has finished moving the window
    WId activeBefore_ = 0; ///< the window that was active when this one was shown; 0 for none
    int topLimit_ = std::numeric_limits<int>::min();
    int geometryAttempts_ = 0; ///< number of times that this geometry was requested again
    bool isMoved_ = false; ///< moved since it last settled
    /// Moved by the user through the window manager since it last settled.
    bool isMovedByHand_ = false;
    bool isNewlyMapped_ = false;
};

} // namespace vellumo

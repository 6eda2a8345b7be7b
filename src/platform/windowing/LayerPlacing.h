// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include "platform/wayland/LayerShell.h"
#include "platform/windowing/PanelPlacing.h"
#include <QPointer>
#include <functional>

class QQuickWindow;
class QScreen;

namespace vellumo {

/// Places panels as layer surfaces: the compositor puts them where they ask to be, and gives them
/// the keyboard only while they ask for it.
class LayerPlacing final : public PanelPlacing {
    Q_OBJECT

public:
    /// `isMoving` returns whether the program itself is moving the window step by step. All must
    /// outlive this object.
    LayerPlacing(LayerShell &shell, QQuickWindow &window, const FloatingPanelStyle &style,
                 std::function<bool()> isMoving);
    ~LayerPlacing() override;

    void setGeometry(const QRect &geometry) override;
    [[nodiscard]] QRect geometry() const override { return geometry_; }
    void show() override;
    void hide() override;
    [[nodiscard]] bool isShown() const override { return isShown_; }
    void raise() override { } // the one shown last is above
    void takeKeyboard() override;
    void setBlended(bool /*isBlended*/) override { } // always is
    void outline(const QRect & /*picture*/, bool /*isBlended*/) override { }
    void takeClicks(const QRect &frame) override;
    [[nodiscard]] QPoint pointerPosition(const QPointerEvent &event) override;
    [[nodiscard]] bool seesClicksElsewhere() const override { return false; }
    [[nodiscard]] bool canAnimate(const QRect &from, const QRect &to) const override;
    [[nodiscard]] QRect dragArea(const QRect &picture) const override;
    void finishDrag() override;
    void handle(const QEvent &event) override;

private:
    void appear();
    void applyResize();
    void reappear();
    void retry();
    void handleClosed();
    void releaseKeyboard();
    void yieldKeyboard();
    void refuseKeyboard();
    void handlePress(QPointF position);
    [[nodiscard]] LayerSurface::State state() const;

    LayerShell &shell_;
    QQuickWindow &window_;
    const FloatingPanelStyle &style_;
    std::function<bool()> isMoving_;
    std::unique_ptr<LayerSurface> surface_; ///< null while hidden, or while none is to be had
    QPointer<QScreen> screen_; ///< of the surface
    QRect geometry_;
    QRect clickable_;
    QPoint pointer_; ///< the last position
    QPoint pressOrigin_; ///< top left corner of the window at the last press
    bool isShown_ = false;
    bool isResizing_ = false; ///< the frame with the new size is not drawn yet
    int attempts_ = 0; ///< to show the window, without an answer in time
    bool takesKeyboard_ = false;
};

} // namespace vellumo

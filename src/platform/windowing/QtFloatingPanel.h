// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include "platform/windowing/PanelDrag.h"
#include "platform/windowing/PanelFade.h"
#include <QQuickWindow>
#include <QVariantAnimation>

class QQmlEngine;
class QQuickItem;

namespace vellumo {

class PanelPlacing;
class QtFloatingWindows;
class ShadowItem;

/// One floating panel. It has three rectangles, the last two in Qt's coordinates: the frame, which
/// callers see; the picture, which follows the frame during an animation; and the native window,
/// which contains the picture with the shadow's margin and is resized at most once at each end of
/// an animation.
class QtFloatingPanel final : public FloatingPanel {
    Q_OBJECT

public:
    QtFloatingPanel(QtFloatingWindows &windows, QQmlEngine &engine, const FloatingPanelStyle &style,
                    const FloatingPanelContent &content);
    ~QtFloatingPanel() override;

    [[nodiscard]] Rect frame() const override { return frame_; }
    void setFrame(const Rect &frame) override;
    void animateFrame(const Rect &frame, std::chrono::milliseconds duration,
                      std::function<void()> completion) override;
    void setCatchesClicks(bool catches) override;
    void performDrag() override;
    void animateAlpha(double alpha, std::chrono::milliseconds duration,
                      std::function<void()> completion) override;
    void setCursor(PanelCursor cursor) override;
    [[nodiscard]] bool isVisible() const override;
    void orderFrontRegardless() override;
    void orderOut() override;
    void fadeOut(std::chrono::milliseconds duration) override;
    void makeKey() override;

    [[nodiscard]] WindowLevel level() const { return style_.level; }
    void raise();
    [[nodiscard]] QQuickWindow &window() const { return *window_; }
    /// Returns the root of the content; null when it could not be created.
    [[nodiscard]] QQuickItem *content() const { return content_; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] std::unique_ptr<PanelPlacing> makePlacing();
    void renderOnce();
    void adaptToCompositor();

    /// Moves picture and native window; the native window encloses `around`.
    void place(const QRect &picture, const QRect &around);
    void arrive();
    void rest();
    void setOpacity(double opacity);
    void handlePointer(const QPointerEvent &event);
    void takeOverPosition(QPoint distance, bool isByUser);
    void shapeVisiblePart();
    void shapeInput();
    [[nodiscard]] bool hasBlendedEdges() const;

    QtFloatingWindows &windows_;
    FloatingPanelStyle style_;
    std::unique_ptr<QQuickWindow> window_;
    std::unique_ptr<PanelPlacing> placing_;
    QQuickItem *content_ = nullptr;
    ShadowItem *shadow_ = nullptr;

    Rect frame_;
    QRect picture_;
    QRect inside_; ///< the picture in the native window
    QVariantAnimation animation_;
    std::function<void()> completion_;
    PanelFade fade_;
    PanelDrag drag_; ///< of the picture
    bool catchesClicks_ = false; ///< the window covers the screen
    bool isShapePending_ = false;
    bool isAppearing_ = false;
    bool isLeaving_ = false; ///< fades out
};

} // namespace vellumo

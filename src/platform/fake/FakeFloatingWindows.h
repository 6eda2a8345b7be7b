// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include <QList>
#include <QPointer>
#include <optional>

namespace vellumo {

/// A panel without a window. Animations end when the test calls arrive().
class FakeFloatingPanel : public FloatingPanel {
    Q_OBJECT

public:
    FakeFloatingPanel(FloatingPanelStyle style, FloatingPanelContent content);

    const FloatingPanelStyle style;
    const FloatingPanelContent content;
    int timesShown = 0; ///< number of changes from hidden to visible
    int timesRaised = 0;
    bool isKey = false;
    bool catchesClicks = false;
    bool lastFrameWasAnimated = false;
    int dragsBegun = 0;
    double alpha = 1;
    PanelCursor cursor = PanelCursor::Arrow;

    [[nodiscard]] Rect frame() const override { return frame_; }
    void setFrame(const Rect &frame) override;
    void animateFrame(const Rect &frame, std::chrono::milliseconds duration,
                      std::function<void()> completion) override;
    void setCatchesClicks(bool catches) override { catchesClicks = catches; }
    void performDrag() override { ++dragsBegun; }
    void animateAlpha(double alpha, std::chrono::milliseconds duration,
                      std::function<void()> completion) override;
    void setCursor(PanelCursor newCursor) override { cursor = newCursor; }
    [[nodiscard]] bool isVisible() const override { return isVisible_; }
    void orderFrontRegardless() override;
    void orderOut() override;
    void fadeOut(std::chrono::milliseconds /*duration*/) override { orderOut(); }
    void makeKey() override;

    /// Ends the running animation. Returns whether there was one.
    bool finishAnimation();
    bool finishFading();

    void letUserMoveTo(const Rect &frame);
    void letManagerMoveTo(const Rect &frame) { moveTo(frame); }

private:
    void moveTo(const Rect &frame);

    Rect frame_;
    bool isVisible_ = false;
    std::optional<std::function<void()>> arriving_;
    std::optional<std::function<void()>> fading_;
};

class FakeFloatingWindows : public FloatingWindows {
public:
    QList<QPointer<FakeFloatingPanel>> panels; ///< in order of creation; null after destruction

    [[nodiscard]] std::unique_ptr<FloatingPanel>
    createPanel(const FloatingPanelStyle &style, const FloatingPanelContent &content) override;
    [[nodiscard]] QList<Rect> visibleFrames() const override;
};

} // namespace vellumo

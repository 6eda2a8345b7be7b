// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/fake/FakeFloatingWindows.h"

namespace vellumo {

FakeFloatingPanel::FakeFloatingPanel(FloatingPanelStyle panelStyle,
                                     FloatingPanelContent panelContent)
    : style(panelStyle)
    , content(std::move(panelContent))
{
}

void FakeFloatingPanel::moveTo(const Rect &frame)
{
    const bool differs = frame != frame_;
    frame_ = frame;
    arriving_.reset();
    if (differs) {
        Q_EMIT moved();
    }
}

void FakeFloatingPanel::letUserMoveTo(const Rect &frame)
{
    moveTo(frame);
    Q_EMIT movedByUser();
}

void FakeFloatingPanel::setFrame(const Rect &frame)
{
    lastFrameWasAnimated = false;
    moveTo(frame);
}

void FakeFloatingPanel::animateFrame(const Rect &frame, std::chrono::milliseconds /*duration*/,
                                     std::function<void()> completion)
{
    lastFrameWasAnimated = true;
    moveTo(frame);
    arriving_ = std::move(completion);
}

void FakeFloatingPanel::animateAlpha(double newAlpha, std::chrono::milliseconds /*duration*/,
                                     std::function<void()> completion)
{
    alpha = newAlpha;
    fading_ = std::move(completion);
}

namespace {

bool finish(std::optional<std::function<void()>> &animation)
{
    const auto completion = std::exchange(animation, std::nullopt);
    if (completion && *completion) {
        (*completion)();
    }
    return completion.has_value();
}

} // namespace

bool FakeFloatingPanel::finishAnimation()
{
    return finish(arriving_);
}

bool FakeFloatingPanel::finishFading()
{
    return finish(fading_);
}

void FakeFloatingPanel::orderFrontRegardless()
{
    timesShown += isVisible_ ? 0 : 1;
    ++timesRaised;
    isVisible_ = true;
}

void FakeFloatingPanel::orderOut()
{
    isVisible_ = false;
    isKey = false;
    arriving_.reset();
    fading_.reset();
}

void FakeFloatingPanel::makeKey()
{
    isKey = isVisible_ && style.canBecomeKey;
}

std::unique_ptr<FloatingPanel> FakeFloatingWindows::createPanel(const FloatingPanelStyle &style,
                                                                const FloatingPanelContent &content)
{
    auto panel = std::make_unique<FakeFloatingPanel>(style, content);
    panels << panel.get();
    return panel;
}

QList<Rect> FakeFloatingWindows::visibleFrames() const
{
    QList<Rect> frames;
    for (const auto &panel : panels) {
        if (panel && panel->isVisible()) {
            frames.append(panel->frame());
        }
    }
    return frames;
}

} // namespace vellumo

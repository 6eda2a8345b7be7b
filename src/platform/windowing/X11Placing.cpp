// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/X11Placing.h"

#include "platform/windowing/x11/X11Hints.h"
#include <QPointerEvent>
#include <QQuickWindow>
#include <QScreen>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto keyboardReturnTime = 100ms; // time for the window manager to do it
constexpr auto settlingTime = 100ms;
constexpr int maxGeometryAttempts = 3;
constexpr quint32 transparentPixel = 0;
constexpr quint32 opaqueBlackPixel = 0xFF000000;

} // namespace

X11Placing::X11Placing(QQuickWindow &window, const FloatingPanelStyle &style,
                       std::function<bool()> isMoving)
    : window_(window)
    , style_(style)
    , isMoving_(std::move(isMoving))
    , outline_(window, style)
{
    settling_.setSingleShot(true);
    settling_.setInterval(settlingTime);
    connect(&settling_, &QTimer::timeout, this, &X11Placing::settle);
}

void X11Placing::setGeometry(const QRect &geometry)
{
    if (geometry != geometry_) {
        geometry_ = geometry;
        geometryAttempts_ = 0;
        window_.setGeometry(geometry);
    }
}

bool X11Placing::isShown() const
{
    return window_.isVisible();
}

void X11Placing::show()
{
    if (!isShown()) {
        isNewlyMapped_ = true;
        geometryAttempts_ = 0;
        x11::leaveOutOfLists(window_.winId());
        x11::refuseShadow(window_.winId());
        window_.show();
        x11::floatEverywhere(window_.winId());
    }
    const WId active = x11::isAvailable() ? x11::activeWindow() : 0;
    if (active != window_.winId()) {
        activeBefore_ = active;
    }
    lift_.apply(window_, style_.level, active);
    window_.raise();
}

void X11Placing::hide()
{
    const bool hadKeyboard = window_.isActive();
    window_.hide();
    if (hadKeyboard) {
        scheduleKeyboardReturn();
    }
    activeBefore_ = 0;
    lift_.undo(window_);
}

/// Window managers give the keyboard to the window that had it before, or to one that was clicked.
/// Some, such as xfwm4 4.20, may leave no window with it.
void X11Placing::scheduleKeyboardReturn()
{
    if (const WId window = std::exchange(activeBefore_, 0)) {
        QTimer::singleShot(keyboardReturnTime, this, [this, window] {
            if (!isShown() && x11::activeWindow() == 0) {
                x11::activate(window);
            }
        });
    }
}

void X11Placing::raise()
{
    window_.raise();
}

void X11Placing::takeKeyboard()
{
    if (x11::isAvailable()) {
        x11::activate(window_.winId());
    } else {
        window_.requestActivate();
    }
}

void X11Placing::setBlended(bool isBlended)
{
    // Fills new areas before they are painted, so that no remains of other windows are visible.
    x11::setBackground(window_.winId(), isBlended ? transparentPixel : opaqueBlackPixel);
}

void X11Placing::outline(const QRect &picture, bool isBlended)
{
    outline_.show(picture, isBlended);
}

void X11Placing::takeClicks(const QRect &frame)
{
    clickable_ = frame;
    outline_.takeClicks(frame);
}

QPoint X11Placing::pointerPosition(const QPointerEvent &event)
{
    return event.points().constFirst().globalPosition().toPoint();
}

void X11Placing::finishDrag()
{
    isMoved_ = true;
    settling_.start(); // the window manager may have placed the window elsewhere
}

void X11Placing::handle(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Expose:
        handleExposure();
        break;
    case QEvent::Move:
        noticeMove();
        break;
    case QEvent::Resize:
        settling_.start();
        break;
    default:
        break;
    }
}

void X11Placing::handleExposure()
{
    if (!window_.isExposed()) {
        return;
    }
    if (!isShown()) {
        // a slow window manager maps a window that has been hidden meanwhile
        x11::withdraw(window_.winId());
    } else if (std::exchange(isNewlyMapped_, false)) {
        // Again: some window managers ignore what was set before they managed the window.
        outline_.takeClicks(clickable_);
        settling_.start(); // they may also ignore a geometry set before
    }
}

void X11Placing::noticeMove()
{
    if (!style_.isMovable) {
        followBar();
        return;
    }
    const bool isOwn = isMoving_() || window_.position() == geometry_.topLeft();
    isMovedByHand_ = isMovedByHand_ || (!isOwn && x11::isButtonHeld());
    isMoved_ = true;
    settling_.start();
}

/// Mutter keeps every window below the bar at the top of the screen, also over a full-screen
/// window, and moves it there before it maps it. Asking again changes nothing.
void X11Placing::followBar()
{
    const QPoint distance = window_.position() - geometry_.topLeft();
    if (distance.x() == 0 && distance.y() > 0) {
        const QScreen *screen = window_.screen();
        if (screen != nullptr && geometry_.top() <= screen->geometry().top()) {
            topLimit_ = window_.position().y();
        }
        takeOverPosition();
    }
}

void X11Placing::settle()
{
    if (std::exchange(isMoved_, false)) {
        takeOverPosition();
    }
    // A window manager that is still handling the last unmapping may keep the geometry from before.
    if (isShown() && !isMoving_() && window_.geometry() != geometry_
        && geometryAttempts_ < maxGeometryAttempts) {
        ++geometryAttempts_; // some window managers insist on theirs
        window_.setGeometry(geometry_);
    }
}

/// Handles moves that the user makes through the window manager, and positions that the window
/// manager refuses or changes.
void X11Placing::takeOverPosition()
{
    const bool isByUser = std::exchange(isMovedByHand_, false);
    const QPoint distance = window_.position() - geometry_.topLeft();
    if (isShown() && !isMoving_() && !distance.isNull()) {
        geometry_.translate(distance);
        Q_EMIT movedByDesktop(distance, isByUser);
    }
}

} // namespace vellumo

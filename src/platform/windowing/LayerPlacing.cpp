// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/LayerPlacing.h"

#include "platform/Diagnostics.h"
#include "platform/windowing/TextUnderPointer.h"
#include <QGuiApplication>
#include <QPointerEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// How often a compositor is asked that was too busy to show the panel at once.
constexpr int maxAttempts = 10;

/// More than the pointer moves between two events.
constexpr int dragMargin = 256;

int distance(QPoint from, QPoint to)
{
    return (to - from).manhattanLength();
}

/// Returns the screen that shows the middle of a rectangle, else the main one; null without
/// screens.
QScreen *screenOf(const QRect &rect)
{
    QScreen *screen = QGuiApplication::screenAt(rect.center());
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    // The last screen that is removed is replaced by one without an output.
    return screen != nullptr && !screen->geometry().isEmpty() ? screen : nullptr;
}

} // namespace

LayerPlacing::LayerPlacing(LayerShell &shell, QQuickWindow &window, const FloatingPanelStyle &style,
                           std::function<bool()> isMoving)
    : shell_(shell)
    , window_(window)
    , style_(style)
    , isMoving_(std::move(isMoving))
{
    window_.setProperty(layerProperty::yieldsKeyboard, !style.canBecomeKey);
    connect(&window_, &QQuickWindow::afterRendering, this, &LayerPlacing::applyResize);
    // There may have been none. Queued, since the screen is not complete yet.
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &LayerPlacing::retry,
            Qt::QueuedConnection);
}

LayerPlacing::~LayerPlacing()
{
    hide();
}

LayerSurface::State LayerPlacing::state() const
{
    const QPoint origin = screen_ != nullptr ? screen_->geometry().topLeft() : QPoint();
    return {geometry_.topLeft() - origin, geometry_.size(), takesKeyboard_};
}

void LayerPlacing::setGeometry(const QRect &geometry)
{
    if (geometry == geometry_) {
        return;
    }
    const bool isResized = geometry.size() != geometry_.size();
    geometry_ = geometry;
    window_.setProperty(layerProperty::position, geometry.topLeft());
    if (surface_ && !isMoving_() && screenOf(geometry) != screen_) {
        reappear();
        return;
    }
    window_.setGeometry(geometry);
    if (surface_ && isResized) {
        isResizing_ = true;
        window_.update();
    } else if (surface_) {
        surface_->set(state());
        surface_->commit();
    }
}

/// Moves the surface together with the frame that has its new size, which is about to be committed.
void LayerPlacing::applyResize()
{
    if (surface_ && isResizing_ && window_.size() == geometry_.size()) {
        isResizing_ = false;
        surface_->set(state());
        window_.setMask(clickable_); // commits
    }
}

void LayerPlacing::show()
{
    if (!std::exchange(isShown_, true)) {
        attempts_ = 0;
        appear();
    }
}

void LayerPlacing::appear()
{
    if (!isShown_ || surface_) {
        return;
    }
    screen_ = screenOf(geometry_);
    if (screen_ == nullptr) {
        return;
    }
    isResizing_ = false;
    window_.setScreen(screen_);
    window_.setGeometry(geometry_);
    window_.setMask(clickable_);
    surface_ = shell_.show(window_, *screen_, state());
    if (surface_) {
        attempts_ = 0;
        surface_->onClosed = [this] { handleClosed(); };
    } else if (++attempts_ < maxAttempts) {
        shell_.whenProcessed([self = QPointer(this)] {
            if (self) {
                self->appear();
            }
        });
    } else {
        printDiagnostic(u"the compositor does not show a layer surface"_s);
    }
}

void LayerPlacing::retry()
{
    attempts_ = 0;
    appear();
}

/// The compositor closes what was on a screen that is removed.
void LayerPlacing::handleClosed()
{
    QMetaObject::invokeMethod(
        this,
        [this] {
            surface_.reset();
            window_.hide();
            retry();
        },
        Qt::QueuedConnection);
}

void LayerPlacing::reappear()
{
    surface_.reset();
    window_.hide();
    appear();
}

void LayerPlacing::hide()
{
    isShown_ = false;
    takesKeyboard_ = false;
    surface_.reset();
    window_.hide();
}

void LayerPlacing::takeKeyboard()
{
    if (surface_ && !std::exchange(takesKeyboard_, true)) {
        window_.setProperty(layerProperty::yieldsKeyboard, false);
        surface_->set(state());
        surface_->commit();
    }
}

void LayerPlacing::releaseKeyboard()
{
    if (std::exchange(takesKeyboard_, false) && surface_) {
        surface_->set(state());
        surface_->commit();
    }
}

/// KWin gives the keyboard to what was clicked, unasked, and back only when that is hidden.
void LayerPlacing::refuseKeyboard()
{
    if (style_.canBecomeKey) {
        return;
    }
    const auto reappear = [this] {
        if (surface_ && window_.isActive() && QGuiApplication::mouseButtons() == Qt::NoButton) {
            this->reappear();
        }
    };
    QMetaObject::invokeMethod(this, reappear, Qt::QueuedConnection); // after the click
}

void LayerPlacing::yieldKeyboard()
{
    window_.setProperty(layerProperty::yieldsKeyboard, true);
    releaseKeyboard();
}

void LayerPlacing::takeClicks(const QRect &frame)
{
    clickable_ = frame;
    if (!isResizing_) {
        window_.setMask(frame);
    }
}

QPoint LayerPlacing::pointerPosition(const QPointerEvent &event)
{
    const QPoint inside = event.points().constFirst().position().toPoint();
    const QPoint now = geometry_.topLeft() + inside;
    const QPoint before = pressOrigin_ + inside;
    if (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::TouchBegin) {
        pressOrigin_ = geometry_.topLeft();
        pointer_ = now;
    } else if (isMoving_() && distance(before, pointer_) < distance(now, pointer_)) {
        pointer_ = before;
    } else {
        pointer_ = now;
    }
    return pointer_;
}

/// A surface is shown on one screen only.
bool LayerPlacing::canAnimate(const QRect &from, const QRect &to) const
{
    return screenOf(from) == screenOf(to);
}

/// Covers the whole screen, so that the window need not move: until the button is released, some
/// compositors report positions relative to where the window was at the press, others to where it
/// is. The corner is moved so far that the two cannot be confused.
QRect LayerPlacing::dragArea(const QRect &picture) const
{
    const QScreen *screen = isMoving_() ? screen_.data() : screenOf(picture);
    return screen != nullptr ? screen->geometry().adjusted(-dragMargin, -dragMargin, 0, 0)
                             : picture;
}

void LayerPlacing::finishDrag()
{
    if (surface_ && screenOf(geometry_) != screen_) {
        reappear();
    }
}

void LayerPlacing::handle(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
        handlePress(static_cast<const QPointerEvent &>(event).points().constFirst().position());
        break;
    case QEvent::Leave:
        // Otherwise keys that are meant for the panel would reach the window below the pointer.
        if (takesKeyboard_ && !hasTypedText(window_)) {
            yieldKeyboard();
        }
        break;
    case QEvent::FocusIn:
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
        refuseKeyboard();
        break;
    case QEvent::FocusOut:
        releaseKeyboard();
        break;
    default:
        break;
    }
}

void LayerPlacing::handlePress(QPointF position)
{
    if (style_.canBecomeKey && hasSelectableText(*window_.contentItem(), position)) {
        takeKeyboard();
    }
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtFloatingPanel.h"

#include "platform/windowing/PanelShape.h"
#include "platform/windowing/PanelWindow.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/ScreenCoordinates.h"
#include "platform/windowing/ShadowItem.h"
#include "platform/windowing/x11/X11Hints.h"
#include <QGuiApplication>
#include <QPointerEvent>
#include <QQuickItem>
#include <QScreen>
#include <chrono>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr std::chrono::milliseconds keyboardReturnTime(100); // time for the window manager to do it
constexpr int maxGeometryAttempts = 3;
constexpr quint32 transparentPixel = 0;
constexpr quint32 opaqueBlackPixel = 0xFF000000;

/// Size of the first drawing of a window that has no frame yet.
constexpr QSize firstSize(520, 420);

QRect screenAround(const QRect &rect)
{
    const QScreen *screen = QGuiApplication::screenAt(rect.center());
    return screen ? screen->geometry() : rect;
}

} // namespace

QtFloatingPanel::QtFloatingPanel(QtFloatingWindows &windows, QQmlEngine &engine,
                                 const FloatingPanelStyle &style,
                                 const FloatingPanelContent &content)
    : windows_(windows)
    , style_(style)
    , window_(makePanelWindow(style_))
    , outline_(*window_, style_)
    , fade_([this](double opacity) {
        if (content_ && hasBlendedEdges()) {
            content_->setOpacity(opacity);
        }
    })
{
    window_->installEventFilter(this);
    if (style_.hasShadow) {
        shadow_ = new ShadowItem(style_.topCornerRadius, style_.bottomCornerRadius,
                                 window_->contentItem());
    }
    content_ = makePanelContent(engine, content, *window_); // after the shadow, to be above it
    animation_.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        const QRect picture = value.toRect();
        // a panel that only moves needs no room to grow
        const bool moves = picture.size() == animation_.endValue().toRect().size()
            && picture.size() == animation_.startValue().toRect().size();
        place(picture,
              moves ? picture : animation_.startValue().toRect() | animation_.endValue().toRect());
    });
    connect(&animation_, &QVariantAnimation::finished, this, &QtFloatingPanel::arrive);
    connect(&windows.compositor(), &CompositorWatch::changed, this,
            &QtFloatingPanel::adaptToCompositor);
    connect(window_.get(), &QQuickWindow::frameSwapped, this, [this] {
        if (isShapePending_) {
            shapeVisiblePart();
        }
        if (std::exchange(isAppearing_, false)) {
            Q_EMIT appeared();
        }
    });
    settling_.setSingleShot(true);
    settling_.setInterval(100);
    connect(&settling_, &QTimer::timeout, this, &QtFloatingPanel::settle);
    adaptToCompositor();
    if (style_.isDrawnAhead) {
        renderOnce();
    }
}

QtFloatingPanel::~QtFloatingPanel()
{
    windows_.forget(this);
}

/// Draws the hidden window once, so that fonts, glyphs and images are loaded before it is shown.
void QtFloatingPanel::renderOnce()
{
    place(QRect(mainGeometry().topLeft(), firstSize), QRect(mainGeometry().topLeft(), firstSize));
    static_cast<void>(window_->grabWindow());
}

bool QtFloatingPanel::hasBlendedEdges() const
{
    return windows_.compositor().isCompositing();
}

void QtFloatingPanel::adaptToCompositor()
{
    // Fills new areas before they are painted, so that no remains of other windows are visible.
    x11::setBackground(window_->winId(), hasBlendedEdges() ? transparentPixel : opaqueBlackPixel);
    if (shadow_) {
        shadow_->setVisible(hasBlendedEdges());
    }
    if (picture_.isValid()) {
        animation_.stop();
        arrive();
    }
}

void QtFloatingPanel::setFrame(const Rect &frame)
{
    const bool differs = frame != frame_;
    frame_ = frame;
    completion_ = nullptr;
    animation_.stop();
    const QRect picture = wholeUnits(toQt(frame, mainGeometry()));
    place(picture, picture);
    if (differs) {
        Q_EMIT moved();
    }
}

void QtFloatingPanel::animateFrame(const Rect &frame, std::chrono::milliseconds duration,
                                   std::function<void()> completion)
{
    const QRect target = wholeUnits(toQt(frame, mainGeometry()));
    if (!isVisible() || duration.count() <= 0 || windows_.isMotionReduced() || target == picture_) {
        setFrame(frame);
        if (completion) {
            QMetaObject::invokeMethod(this, std::move(completion), Qt::QueuedConnection);
        }
        return;
    }
    const bool differs = frame != frame_;
    completion_ = nullptr;
    animation_.stop();
    frame_ = frame;
    completion_ = std::move(completion);
    animation_.setStartValue(picture_);
    animation_.setEndValue(target);
    animation_.setDuration(static_cast<int>(duration.count()));
    animation_.start();
    shapeInput();
    if (differs) {
        Q_EMIT moved();
    }
}

void QtFloatingPanel::arrive()
{
    const QRect picture = wholeUnits(toQt(frame_, mainGeometry()));
    place(picture, picture);
    if (const auto completion = std::exchange(completion_, nullptr)) {
        completion();
    }
}

void QtFloatingPanel::place(const QRect &picture, const QRect &around)
{
    picture_ = picture;
    placeNative(style_.hasShadow && hasBlendedEdges()
                    ? withShadowMargin(around, shadowMargin, screenAround(around))
                    : around);
    const QRect inside = picture_.translated(-native_.topLeft());
    if (isVisible() && inside == inside_) {
        return; // only moved
    }
    inside_ = inside;
    if (content_) {
        content_->setPosition(inside.topLeft());
        content_->setSize(inside.size());
    }
    if (shadow_) {
        const QRect shadow =
            inside.adjusted(-shadowMargin, -shadowMargin, shadowMargin, shadowMargin);
        shadow_->setPosition(shadow.topLeft());
        shadow_->setSize(shadow.size());
    }
    shapeInput();
    isShapePending_ = true;
    if (!isVisible()) {
        shapeVisiblePart();
    } else {
        window_->update(); // the shape is updated after painting
    }
}

void QtFloatingPanel::placeNative(const QRect &native)
{
    if (native != native_) {
        native_ = native;
        geometryAttempts_ = 0;
        window_->setGeometry(native);
    }
}

void QtFloatingPanel::shapeVisiblePart()
{
    isShapePending_ = false;
    outline_.show(picture_.translated(-native_.topLeft()), hasBlendedEdges());
}

void QtFloatingPanel::shapeInput()
{
    outline_.takeClicks(wholeUnits(toQt(frame_, mainGeometry())).translated(-native_.topLeft()));
}

void QtFloatingPanel::performDrag()
{
    completion_ = nullptr;
    animation_.stop();
    drag_.begin();
}

void QtFloatingPanel::handlePointer(const QPointerEvent &event)
{
    const PanelDrag::Step step = drag_.handle(event, picture_.topLeft());
    if (step.origin) {
        const QRect picture(*step.origin, picture_.size());
        frame_ = toDesktop(QRectF(picture), mainGeometry());
        place(picture, picture);
    }
    if (step.isOver) {
        isMoved_ = true;
        settling_.start(); // the window manager may have placed the window elsewhere
        Q_EMIT moved();
        Q_EMIT movedByUser();
    }
}

void QtFloatingPanel::noticeMove()
{
    if (!style_.isMovable) {
        return;
    }
    const bool isOwn = drag_.isUnderWay() || animation_.state() == QVariantAnimation::Running
        || window_->position() == native_.topLeft();
    isMovedByHand_ = isMovedByHand_ || (!isOwn && x11::isButtonHeld());
    isMoved_ = true;
    settling_.start();
}

void QtFloatingPanel::settle()
{
    if (std::exchange(isMoved_, false)) {
        takeOverPosition();
    }
    // A window manager that is still handling the last unmapping may keep the geometry from before.
    const bool rests = !drag_.isUnderWay() && animation_.state() != QVariantAnimation::Running;
    if (isVisible() && rests && window_->geometry() != native_
        && geometryAttempts_ < maxGeometryAttempts) {
        ++geometryAttempts_; // some window managers insist on theirs
        window_->setGeometry(native_);
    }
}

/// Handles moves that the user makes through the window manager, and positions that the window
/// manager refuses or changes.
void QtFloatingPanel::takeOverPosition()
{
    const bool isByHand = std::exchange(isMovedByHand_, false);
    const QPoint distance = window_->position() - native_.topLeft();
    const bool rests = !drag_.isUnderWay() && animation_.state() != QVariantAnimation::Running;
    if (!isVisible() || !rests || distance.isNull()) {
        return;
    }
    native_.translate(distance);
    picture_.translate(distance);
    frame_ = toDesktop(QRectF(picture_), mainGeometry());
    place(picture_, picture_);
    Q_EMIT moved();
    if (isByHand) {
        Q_EMIT movedByUser();
    }
}

void QtFloatingPanel::animateAlpha(double alpha, std::chrono::milliseconds duration,
                                   std::function<void()> completion)
{
    fade_.start(content_ ? content_->opacity() : 1.0, alpha,
                windows_.isMotionReduced() ? std::chrono::milliseconds::zero() : duration,
                std::move(completion));
}

void QtFloatingPanel::setCursor(PanelCursor cursor)
{
    window_->setCursor(cursor == PanelCursor::PointingHand ? Qt::PointingHandCursor
                                                           : Qt::ArrowCursor);
}

void QtFloatingPanel::orderFrontRegardless()
{
    if (!isVisible()) {
        isNewlyMapped_ = true;
        geometryAttempts_ = 0;
        isAppearing_ = true;
        x11::leaveOutOfLists(window_->winId());
        window_->show();
        x11::floatEverywhere(window_->winId());
    }
    const WId active = x11::isAvailable() ? x11::activeWindow() : 0;
    if (active != window_->winId()) {
        activeBefore_ = active;
    }
    lift_.apply(*window_, style_.level, active);
    window_->raise();
    windows_.restackAbove(*this);
}

void QtFloatingPanel::orderOut()
{
    completion_ = nullptr;
    animation_.stop();
    fade_.stop();
    drag_.cancel();
    const bool hadKeyboard = window_->isActive();
    window_->hide();
    if (hadKeyboard) {
        scheduleKeyboardReturn();
    }
    activeBefore_ = 0;
    windows_.refreshCompositor(); // here, since showing must be quick
    lift_.undo(*window_);
}

void QtFloatingPanel::makeKey()
{
    if (!style_.canBecomeKey || !isVisible()) {
        return;
    }
    if (x11::isAvailable()) {
        x11::activate(window_->winId());
    } else {
        window_->requestActivate();
    }
}

/// Window managers give the keyboard to the window that had it before, or to one that was clicked.
/// Some, such as xfwm4 4.20, may leave no window with it.
void QtFloatingPanel::scheduleKeyboardReturn()
{
    if (const WId window = std::exchange(activeBefore_, 0)) {
        QTimer::singleShot(keyboardReturnTime, this, [this, window] {
            if (!isVisible() && x11::activeWindow() == 0) {
                x11::activate(window);
            }
        });
    }
}

bool QtFloatingPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window_.get() && event->type() == QEvent::Close) {
        event->ignore(); // the panel's owner decides when to hide it
        Q_EMIT closeRequested();
        return true;
    }
    if (watched == window_.get() && event->type() == QEvent::Expose && window_->isExposed()) {
        if (!isVisible()) {
            // a slow window manager maps a window that has been hidden meanwhile
            x11::withdraw(window_->winId());
        } else if (std::exchange(isNewlyMapped_, false)) {
            // Again: some window managers ignore what was set before they managed the window.
            shapeInput();
            settling_.start(); // they may also ignore a geometry set before
        }
    }
    if (watched == window_.get()) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TouchCancel:
            handlePointer(*static_cast<QPointerEvent *>(event));
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
    return FloatingPanel::eventFilter(watched, event);
}

} // namespace vellumo

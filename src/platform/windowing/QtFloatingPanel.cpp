// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtFloatingPanel.h"

#include "platform/windowing/LayerPlacing.h"
#include "platform/windowing/PanelShape.h"
#include "platform/windowing/PanelWindow.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/ScreenCoordinates.h"
#include "platform/windowing/ShadowItem.h"
#include "platform/windowing/X11Placing.h"
#include <QGuiApplication>
#include <QPointerEvent>
#include <QQuickItem>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Size of the first drawing of a window that has no frame yet.
constexpr QSize firstSize(520, 420);

/// A part of no window. An empty one would stand for all of it.
constexpr QRect outside(-2, -2, 1, 1);

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
    , window_(makePanelWindow(style_, windows.layerShell() != nullptr))
    , placing_(makePlacing())
    , fade_([this](double opacity) {
        if (hasBlendedEdges()) {
            setOpacity(opacity);
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
    connect(placing_.get(), &PanelPlacing::movedByDesktop, this,
            &QtFloatingPanel::takeOverPosition);
    adaptToCompositor();
    if (style_.isDrawnAhead) {
        renderOnce();
    }
}

QtFloatingPanel::~QtFloatingPanel()
{
    windows_.forget(this);
    window_->removeEventFilter(this);
}

std::unique_ptr<PanelPlacing> QtFloatingPanel::makePlacing()
{
    const auto isMoving = [this] {
        return drag_.isUnderWay() || animation_.state() == QVariantAnimation::Running;
    };
    if (auto *shell = windows_.layerShell()) {
        return std::make_unique<LayerPlacing>(*shell, *window_, style_, isMoving);
    }
    return std::make_unique<X11Placing>(*window_, style_, isMoving);
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
    placing_->setBlended(hasBlendedEdges());
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
    if (!isVisible() || duration.count() <= 0 || windows_.isMotionReduced() || target == picture_
        || !placing_->canAnimate(picture_, target)) {
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
    const QRect covered = catchesClicks_ ? around | placing_->dragArea(picture) : around;
    QRect forShadow = screenAround(around);
    forShadow.setTop(std::max(forShadow.top(), placing_->topLimit()));
    placing_->setGeometry(style_.hasShadow && hasBlendedEdges()
                              ? withShadowMargin(covered, shadowMargin, forShadow)
                              : covered);
    const QRect inside = picture_.translated(-placing_->geometry().topLeft());
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

void QtFloatingPanel::shapeVisiblePart()
{
    isShapePending_ = false;
    placing_->outline(picture_.translated(-placing_->geometry().topLeft()), hasBlendedEdges());
}

void QtFloatingPanel::shapeInput()
{
    if (isLeaving_) {
        placing_->takeClicks(outside);
        return;
    }
    if (catchesClicks_) {
        placing_->takeClicks(QRect(QPoint(), placing_->geometry().size()));
        return;
    }
    placing_->takeClicks(
        wholeUnits(toQt(frame_, mainGeometry())).translated(-placing_->geometry().topLeft()));
}

void QtFloatingPanel::setCatchesClicks(bool catches)
{
    if (placing_->seesClicksElsewhere() || catches == catchesClicks_) {
        return;
    }
    catchesClicks_ = catches;
    const bool isAnimated = animation_.state() == QVariantAnimation::Running;
    place(picture_,
          isAnimated ? animation_.startValue().toRect() | animation_.endValue().toRect()
                     : picture_);
    shapeInput();
}

void QtFloatingPanel::performDrag()
{
    completion_ = nullptr;
    animation_.stop();
    drag_.begin();
}

void QtFloatingPanel::handlePointer(const QPointerEvent &event)
{
    const PanelDrag::Step step = event.pointCount() == 0
        ? drag_.cancelled()
        : drag_.handle(event, placing_->pointerPosition(event), picture_.topLeft());
    if (step.origin) {
        const QRect picture(*step.origin, picture_.size());
        frame_ = toDesktop(QRectF(picture), mainGeometry());
        place(picture, placing_->dragArea(picture));
    }
    if (step.isOver) {
        place(picture_, picture_);
        placing_->finishDrag();
        Q_EMIT moved();
        Q_EMIT movedByUser();
    }
}

void QtFloatingPanel::takeOverPosition(QPoint distance, bool isByUser)
{
    picture_.translate(distance);
    frame_ = toDesktop(QRectF(picture_), mainGeometry());
    place(picture_, picture_);
    Q_EMIT moved();
    if (isByUser) {
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

bool QtFloatingPanel::isVisible() const
{
    return placing_->isShown() && !isLeaving_;
}

void QtFloatingPanel::orderFrontRegardless()
{
    if (!isVisible()) {
        isAppearing_ = true;
    }
    if (std::exchange(isLeaving_, false)) {
        fade_.stop();
        setOpacity(1);
        shapeInput();
        window_->update();
    }
    placing_->show();
    windows_.restackAbove(*this);
}

void QtFloatingPanel::raise()
{
    placing_->raise();
}

void QtFloatingPanel::orderOut()
{
    rest();
    fade_.stop();
    placing_->hide();
    if (std::exchange(isLeaving_, false)) {
        setOpacity(1);
    }
    windows_.refreshCompositor(); // here, since showing must be quick
}

void QtFloatingPanel::fadeOut(std::chrono::milliseconds duration)
{
    if (!isVisible() || !hasBlendedEdges() || windows_.isMotionReduced() || window_->isActive()) {
        orderOut();
        return;
    }
    rest();
    isLeaving_ = true;
    shapeInput();
    fade_.start(1, 0, duration, [this] { orderOut(); });
}

/// Ends what moves the panel.
void QtFloatingPanel::rest()
{
    completion_ = nullptr;
    animation_.stop();
    drag_.cancel();
}

void QtFloatingPanel::setOpacity(double opacity)
{
    if (content_) {
        content_->setOpacity(opacity);
    }
    if (shadow_) {
        shadow_->setOpacity(opacity);
    }
}

void QtFloatingPanel::makeKey()
{
    if (style_.canBecomeKey && isVisible()) {
        placing_->takeKeyboard();
    }
}

bool QtFloatingPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != window_.get()) {
        return FloatingPanel::eventFilter(watched, event);
    }
    if (event->type() == QEvent::Close) {
        event->ignore(); // the panel's owner decides when to hide it
        Q_EMIT closeRequested();
        return true;
    }
    placing_->handle(*event);
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
    default:
        break;
    }
    return FloatingPanel::eventFilter(watched, event);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtFloatingPanel.h"

#include "platform/Diagnostics.h"
#include "platform/windowing/ClipboardWatch.h"
#include "platform/windowing/PanelShape.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/ScreenCoordinates.h"
#include "platform/windowing/ShadowItem.h"
#include "platform/windowing/X11Hints.h"
#include <QBitmap>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr quint32 transparentPixel = 0;
constexpr quint32 opaqueBlackPixel = 0xFF000000;

/// Where the content of a window that has no frame yet is drawn for the first time.
constexpr QSize firstSize(520, 420);

QRect mainGeometry()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry() : QRect();
}

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
{
    createWindow();
    createContent(engine, content);
    animation_.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        const QRect picture = value.toRect();
        // a panel that only moves needs no room to grow in
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
    connect(&fading_, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        if (content_ && hasBlendedEdges()) {
            content_->setOpacity(value.toDouble());
        }
    });
    connect(&fading_, &QVariantAnimation::finished, this, [this] {
        if (const auto done = std::exchange(fadingCompletion_, nullptr)) {
            done();
        }
    });
    settling_.setSingleShot(true);
    settling_.setInterval(100);
    connect(&settling_, &QTimer::timeout, this, &QtFloatingPanel::takeOverPosition);
    adaptToCompositor();
    if (style_.isDrawnAhead) {
        renderOnce();
    }
}

QtFloatingPanel::~QtFloatingPanel()
{
    windows_.forget(this);
}

void QtFloatingPanel::createWindow()
{
    window_ = std::make_unique<QQuickWindow>();
    QSurfaceFormat format = window_->format();
    format.setAlphaBufferSize(8);
    window_->setFormat(format);
    window_->setColor(Qt::transparent);
    window_->setTitle(u"vellumo"_s);
    Qt::WindowFlags flags = Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    if (!style_.canBecomeKey) {
        flags |= Qt::WindowDoesNotAcceptFocus;
    }
    if (style_.ignoresMouseEvents) {
        flags |= Qt::X11BypassWindowManagerHint; // an ornament: nothing in it can be managed
    }
    window_->setFlags(flags);
    window_->setProperty("_q_showWithoutActivating", true);
    window_->installEventFilter(this);
    window_->create();
    if (style_.isMovable) {
        x11::keepContentAtBottomRight(window_->winId());
    }

    if (style_.hasShadow) {
        shadow_ = new ShadowItem(style_.topCornerRadius, style_.bottomCornerRadius,
                                 window_->contentItem());
    }
}

void QtFloatingPanel::createContent(QQmlEngine &engine, const FloatingPanelContent &content)
{
    QQmlComponent component(&engine, content.source);
    QObject *object =
        component.isReady() ? component.createWithInitialProperties(content.properties) : nullptr;
    content_ = qobject_cast<QQuickItem *>(object);
    if (!content_) {
        delete object;
        printDiagnostic(component.errorString());
        return;
    }
    QQmlEngine::setObjectOwnership(content_, QQmlEngine::CppOwnership);
    content_->setParent(window_->contentItem());
    content_->setParentItem(window_->contentItem());
    stopWatchingClipboard(*content_);
}

/// Draws the hidden window once: fonts, glyphs and pictures are ready when it is shown.
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
    // An area is filled with this before it is painted, so no rest of another window shows.
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
        return; // it only moves
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
        window_->update(); // the shape follows when the picture has been painted
    }
}

void QtFloatingPanel::placeNative(const QRect &native)
{
    if (native != native_) {
        native_ = native;
        window_->setGeometry(native);
    }
}

QList<QRect> QtFloatingPanel::pictureBands() const
{
    if (style_.isShapedByContent) {
        return opaqueBands();
    }
    const qreal scale = window_->devicePixelRatio();
    return roundedBands(toPixels(picture_.translated(-native_.topLeft()), scale),
                        style_.topCornerRadius * scale, style_.bottomCornerRadius * scale);
}

QList<QRect> QtFloatingPanel::opaqueBands() const
{
    QList<QRect> bands;
    const QRegion opaque(QBitmap::fromImage(window_->grabWindow().createAlphaMask()));
    for (const QRect &rect : opaque) {
        bands << rect;
    }
    return bands;
}

void QtFloatingPanel::shapeVisiblePart()
{
    isShapePending_ = false;
    x11::setBoundingShape(window_->winId(), hasBlendedEdges() ? QList<QRect>{} : pictureBands());
}

void QtFloatingPanel::shapeInput()
{
    const qreal scale = window_->devicePixelRatio();
    const QRect frame = wholeUnits(toQt(frame_, mainGeometry())).translated(-native_.topLeft());
    x11::setInputShape(window_->winId(),
                       style_.ignoresMouseEvents ? QList<QRect>{}
                                                 : QList<QRect>{toPixels(frame, scale)});
}

void QtFloatingPanel::performDrag()
{
    completion_ = nullptr;
    animation_.stop();
    grabbedAt_ = pressedAt_;
}

void QtFloatingPanel::handleMouse(const QMouseEvent &event)
{
    const QPoint pointer = event.globalPosition().toPoint();
    if (event.type() == QEvent::MouseButtonPress) {
        endDrag(); // its release never came
        pressedAt_ = pointer - picture_.topLeft();
        return;
    }
    if (!grabbedAt_) {
        return;
    }
    const bool isOver =
        event.type() == QEvent::MouseButtonRelease || !event.buttons().testFlag(Qt::LeftButton);
    if (event.type() == QEvent::MouseMove && isOver) {
        endDrag();
        return;
    }
    const QRect picture(pointer - *grabbedAt_, picture_.size());
    frame_ = toDesktop(QRectF(picture), mainGeometry());
    place(picture, picture);
    if (isOver) {
        endDrag();
    }
}

void QtFloatingPanel::endDrag()
{
    if (grabbedAt_) {
        grabbedAt_.reset();
        settling_.start(); // a window manager may have kept the window somewhere else
        Q_EMIT moved();
    }
}

/// The user may move the window in ways of the window manager, and that may refuse a place.
void QtFloatingPanel::takeOverPosition()
{
    const QPoint distance = window_->position() - native_.topLeft();
    const bool rests = !grabbedAt_ && animation_.state() != QVariantAnimation::Running;
    if (!isVisible() || !rests || distance.isNull()) {
        return;
    }
    native_.translate(distance);
    picture_.translate(distance);
    frame_ = toDesktop(QRectF(picture_), mainGeometry());
    place(picture_, picture_);
    Q_EMIT moved();
}

void QtFloatingPanel::animateAlpha(double alpha, std::chrono::milliseconds duration,
                                   std::function<void()> completion)
{
    fadingCompletion_ = nullptr;
    fading_.stop();
    fadingCompletion_ = std::move(completion);
    fading_.setStartValue(content_ ? content_->opacity() : 1.0);
    fading_.setEndValue(alpha);
    fading_.setDuration(windows_.isMotionReduced() ? 0 : static_cast<int>(duration.count()));
    fading_.start();
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
        isAppearing_ = true;
        window_->show();
        x11::floatEverywhere(window_->winId());
    }
    liftOverFullScreen();
    window_->raise();
    windows_.restackAbove(*this);
}

void QtFloatingPanel::liftOverFullScreen()
{
    const WId active = x11::activeWindow();
    // tied to another window it shares that one's fate, which is right for a passing panel only
    const bool isNeeded = style_.level == WindowLevel::Status && active != 0
        && active != window_->winId() && x11::isFullScreen(active);
    if (isNeeded) {
        x11::setTransientFor(window_->winId(), active);
    } else if (isLifted_ && active != window_->winId()) {
        x11::setTransientFor(window_->winId(), 0);
    }
    isLifted_ = isNeeded || (isLifted_ && active == window_->winId());
}

void QtFloatingPanel::orderOut()
{
    completion_ = nullptr;
    animation_.stop();
    fadingCompletion_ = nullptr;
    fading_.stop();
    grabbedAt_.reset();
    window_->hide();
    windows_.refreshCompositor(); // now, since showing must be quick
    if (isLifted_) {
        x11::setTransientFor(window_->winId(), 0);
        isLifted_ = false;
    }
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

bool QtFloatingPanel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == window_.get() && event->type() == QEvent::Close) {
        event->ignore(); // whoever shows the panel decides when it goes
        Q_EMIT closeRequested();
        return true;
    }
    if (watched == window_.get() && event->type() == QEvent::Expose && window_->isExposed()) {
        if (!isVisible()) {
            // a window manager that is behind maps what has been hidden meanwhile
            x11::withdraw(window_->winId());
        } else if (std::exchange(isNewlyMapped_, false)) {
            shapeInput(); // again: some miss what was set before the window was theirs
        }
    }
    if (watched == window_.get()) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseMove:
        case QEvent::MouseButtonRelease:
            handleMouse(*static_cast<QMouseEvent *>(event));
            break;
        case QEvent::Move:
            if (style_.isMovable) {
                settling_.start();
            }
            break;
        default:
            break;
        }
    }
    return FloatingPanel::eventFilter(watched, event);
}

} // namespace vellumo

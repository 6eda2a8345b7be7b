// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtScreens.h"

#include "platform/wayland/LayerShell.h"
#include "platform/windowing/OwnPointer.h"
#include "platform/windowing/ScreenCoordinates.h"
#include "platform/windowing/x11/X11Hints.h"
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace vellumo {

namespace {

/// Outside of every screen.
constexpr QPoint nowhere(-1'000'000, -1'000'000);

Screen described(const QScreen &screen, const StrutWatch &struts)
{
    const QRect main = mainGeometry();
    const QRect frame = screen.geometry();
    const double scale = screen.devicePixelRatio();
    const QMargins reserved =
        struts.margins({frame.topLeft(), (QSizeF(frame.size()) * scale).toSize()});
    QRectF visible = QRectF(frame).marginsRemoved(QMarginsF(reserved) / scale);
    if (QGuiApplication::screens().size() == 1 || !x11::isAvailable()) {
        // With several screens it is wrong for some of them.
        visible &= QRectF(screen.availableGeometry());
    }
    return {toDesktop(QRectF(frame), main), toDesktop(visible, main), 0};
}

} // namespace

QtScreens::QtScreens(QObject *parent) : Screens(parent)
{
    settling_.setSingleShot(true);
    settling_.setInterval(0);
    connect(&settling_, &QTimer::timeout, this, [this] {
        struts_.refresh(); // struts are needed only with several screens
        Q_EMIT changed();
    });
    connect(&struts_, &StrutWatch::changed, &settling_, qOverload<>(&QTimer::start));
    const auto settle = [this] { settling_.start(); };
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, settle);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, settle);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen *screen) {
        watch(*screen);
        settling_.start();
    });
    for (const QScreen *screen : QGuiApplication::screens()) {
        watch(*screen);
    }
}

void QtScreens::watch(const QScreen &screen)
{
    const auto settle = [this] { settling_.start(); };
    connect(&screen, &QScreen::geometryChanged, this, settle);
    connect(&screen, &QScreen::availableGeometryChanged, this, settle);
}

QList<Screen> QtScreens::screens() const
{
    QList<Screen> list;
    for (const QScreen *screen : QGuiApplication::screens()) {
        list << described(*screen, struts_);
    }
    return list;
}

std::optional<Screen> QtScreens::mainScreen() const
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? std::optional(described(*primary, struts_)) : std::nullopt;
}

Point QtScreens::pointerLocation() const
{
    const QPoint position =
        pointer_ != nullptr ? pointer_->position().value_or(nowhere) : QCursor::pos();
    return toDesktop(position, mainGeometry());
}

Point QtScreens::activeLocation() const
{
    if (shell_ == nullptr || pointer_->position()) {
        return pointerLocation();
    }
    const QScreen *screen = shell_->activeScreen();
    return screen != nullptr ? toDesktop(screen->geometry().center(), mainGeometry())
                             : pointerLocation();
}

} // namespace vellumo

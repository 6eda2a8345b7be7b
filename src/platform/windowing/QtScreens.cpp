// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtScreens.h"

#include "platform/windowing/ScreenCoordinates.h"
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace vellumo {

namespace {

QRect mainGeometry()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry() : QRect();
}

Screen described(const QScreen &screen)
{
    const QRect main = mainGeometry();
    return {toDesktop(QRectF(screen.geometry()), main),
            toDesktop(QRectF(screen.availableGeometry()), main), 0};
}

} // namespace

QList<Screen> QtScreens::screens() const
{
    QList<Screen> list;
    for (const QScreen *screen : QGuiApplication::screens()) {
        list << described(*screen);
    }
    return list;
}

std::optional<Screen> QtScreens::mainScreen() const
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? std::optional(described(*primary)) : std::nullopt;
}

Point QtScreens::pointerLocation() const
{
    return toDesktop(QCursor::pos(), mainGeometry());
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/look/SystemLook.h"

#include "platform/DesktopAppearance.h"

#include <QEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <algorithm>

namespace vellumo {

qreal textScaleForPoints(qreal points)
{
    constexpr qreal smallestDefault = 9;
    constexpr qreal largestDefault = 11;
    if (points <= 0) {
        return 1;
    }
    const qreal nearest = std::clamp(points, smallestDefault, largestDefault);
    return std::clamp(points / nearest, 0.85, 2.0);
}

SystemLook::SystemLook(QObject *parent) : QObject(parent)
{
    readApplication();
    qGuiApp->installEventFilter(this);
}

SystemLook *SystemLook::of(QQmlEngine &engine)
{
    return engine.singletonInstance<SystemLook *>(qmlTypeId("Vellumo.Look", 1, 0, "SystemLook"));
}

void SystemLook::readApplication()
{
    const QPalette palette = QGuiApplication::palette();
    dark_ = palette.color(QPalette::Window).lightnessF()
        < palette.color(QPalette::WindowText).lightnessF();
    textScale_ = textScaleForPoints(QFontInfo(QGuiApplication::font()).pointSizeF());
}

bool SystemLook::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qGuiApp
        && (event->type() == QEvent::ApplicationPaletteChange
            || event->type() == QEvent::ApplicationFontChange)) {
        readAppearance();
    }
    return false;
}

void SystemLook::follow(const DesktopAppearance &appearance)
{
    appearance_ = &appearance;
    connect(&appearance, &DesktopAppearance::changed, this, &SystemLook::readAppearance);
    readAppearance();
}

void SystemLook::readAppearance()
{
    readApplication();
    if (appearance_) {
        dark_ = appearance_->isDark().value_or(dark_);
        reducedMotion_ = appearance_->isMotionReduced();
    }
    Q_EMIT changed();
}

} // namespace vellumo

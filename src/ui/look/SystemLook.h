// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;

namespace vellumo {

class DesktopAppearance;

/// The desktop's appearance: dark or light, reduced motion, text size. Starts with the
/// application's palette and font; the source passed to follow() overrides the palette. One per QML
/// engine, which owns it.
class SystemLook : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ isMotionReduced NOTIFY changed)
    Q_PROPERTY(qreal textScale READ textScale NOTIFY changed)

public:
    explicit SystemLook(QObject *parent = nullptr);

    /// Returns the singleton of this engine; null before a window that uses it has been created.
    [[nodiscard]] static SystemLook *of(QQmlEngine &engine);

    void follow(const DesktopAppearance &appearance);

    [[nodiscard]] bool isDark() const { return dark_; }
    [[nodiscard]] bool isMotionReduced() const { return reducedMotion_; }
    /// Returns a factor for text sizes; 1 at the default sizes of desktops.
    [[nodiscard]] qreal textScale() const { return textScale_; }

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void readApplication();
    void readAppearance();

    QPointer<const DesktopAppearance> appearance_;
    bool dark_ = false;
    bool reducedMotion_ = false;
    qreal textScale_ = 1;
};

/// Returns the text factor for an application font of this size in points; common default sizes
/// give 1.
[[nodiscard]] qreal textScaleForPoints(qreal points);

} // namespace vellumo

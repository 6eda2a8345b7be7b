// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;

namespace vellumo {

class DesktopAppearance;

/// What the desktop says about looks: dark or light, animations wanted or not, the size of text.
/// Starts from the application's palette and font; what follow() is given outranks the palette.
/// One per QML engine, which owns it.
class SystemLook : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducedMotion READ isMotionReduced NOTIFY changed)
    Q_PROPERTY(qreal textScale READ textScale NOTIFY changed)

public:
    explicit SystemLook(QObject *parent = nullptr);

    /// The object that QML of this engine sees.
    [[nodiscard]] static SystemLook *of(QQmlEngine &engine);

    void follow(const DesktopAppearance &appearance);

    [[nodiscard]] bool isDark() const { return dark_; }
    [[nodiscard]] bool isMotionReduced() const { return reducedMotion_; }
    /// A factor for text sizes, 1 at the sizes that desktops come with.
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

/// A text factor for an application font of so many points: the common default sizes count as 1.
[[nodiscard]] qreal textScaleForPoints(qreal points);

} // namespace vellumo

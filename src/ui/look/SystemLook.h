// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;

namespace vellumo {

/// What the desktop says about looks: dark or light, animations wanted or not, the size of text.
/// Starts from the application's palette and font; followDesktop() adds the settings portal.
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

    /// Asks the settings portal on the session bus, which is open, and follows its changes; never
    /// blocks. Without a portal nothing changes.
    void followDesktop(QDBusConnection bus);

    [[nodiscard]] bool isDark() const { return dark_; }
    [[nodiscard]] bool isMotionReduced() const { return reducedMotion_; }
    /// A factor for text sizes, 1 at the sizes that desktops come with.
    [[nodiscard]] qreal textScale() const { return textScale_; }

    /// One setting of the portal, as its SettingChanged signal brings it. Unknown ones and values
    /// of another type are ignored.
    void apply(const QString &group, const QString &key, const QVariant &value);

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readApplication();
    void readAll(QDBusPendingCallWatcher *call);

    bool dark_ = false;
    bool darkIsTold_ = false; ///< by the portal, which then outranks the palette
    bool reducedMotion_ = false;
    qreal textScale_ = 1;
};

/// A text factor for an application font of so many points: the common default sizes count as 1.
[[nodiscard]] qreal textScaleForPoints(qreal points);

} // namespace vellumo

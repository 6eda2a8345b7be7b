// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

namespace vellumo {

/// Appearance from the settings portal (org.freedesktop.portal.Settings). Without a portal all
/// values stay absent.
class PortalAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    using DesktopAppearance::DesktopAppearance;

    /// Queries the portal on this open bus and follows its changes. Never blocks.
    void follow(QDBusConnection bus);

    [[nodiscard]] std::optional<bool> isDark() const override { return dark_; }
    [[nodiscard]] bool isMotionReduced() const override { return reducedMotion_; }

    /// Adopts one setting in the form of the portal's SettingChanged signal. Ignores unknown
    /// settings and values of another type.
    void apply(const QString &group, const QString &key, const QVariant &value);

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readAll(QDBusPendingCallWatcher *call);

    std::optional<bool> dark_;
    bool reducedMotion_ = false;
};

} // namespace vellumo

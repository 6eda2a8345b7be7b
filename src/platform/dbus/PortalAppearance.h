// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

namespace vellumo {

/// The appearance by the settings portal (org.freedesktop.portal.Settings). Without a portal all
/// values stay absent.
class PortalAppearance : public DesktopAppearance {
    Q_OBJECT

public:
    using DesktopAppearance::DesktopAppearance;

    /// Asks the portal on this bus, which is open, and follows its changes; never blocks.
    void follow(QDBusConnection bus);

    [[nodiscard]] std::optional<bool> isDark() const override { return dark_; }
    [[nodiscard]] bool isMotionReduced() const override { return reducedMotion_; }

    /// One setting, as the portal's SettingChanged signal brings it. Unknown ones and values of
    /// another type are ignored.
    void apply(const QString &group, const QString &key, const QVariant &value);

private Q_SLOTS:
    void onSettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readAll(QDBusPendingCallWatcher *call);

    std::optional<bool> dark_;
    bool reducedMotion_ = false;
};

} // namespace vellumo

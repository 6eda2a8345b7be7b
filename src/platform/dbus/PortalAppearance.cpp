// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/PortalAppearance.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QMap>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr auto portalService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto portalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto settingsInterface = "org.freedesktop.portal.Settings"_L1;

constexpr auto appearanceGroup = "org.freedesktop.appearance"_L1;
constexpr auto gnomeGroup = "org.gnome.desktop.interface"_L1;
constexpr auto kdeGroup = "org.kde.kdeglobals.KDE"_L1;

} // namespace

void PortalAppearance::follow(QDBusConnection bus)
{
    // No service name: QtDBus would look up its owner in a blocking call.
    bus.connect(QString(), portalPath, settingsInterface, u"SettingChanged"_s, this,
                SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"ReadAll"_s);
    call << QStringList{appearanceGroup, gnomeGroup, kdeGroup};
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &PortalAppearance::readAll);
}

void PortalAppearance::readAll(QDBusPendingCallWatcher *call)
{
    call->deleteLater();
    const QDBusPendingReply<> reply = *call;
    if (reply.isError() || reply.reply().arguments().isEmpty()) {
        return;
    }
    const auto argument = reply.reply().arguments().constFirst().value<QDBusArgument>();
    if (argument.currentSignature() != "a{sa{sv}}"_L1) {
        return;
    }
    QMap<QString, QVariantMap> groups;
    argument >> groups;
    for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
        for (auto entry = group->cbegin(); entry != group->cend(); ++entry) {
            apply(group.key(), entry.key(), entry.value());
        }
    }
}

void PortalAppearance::onSettingChanged(const QString &group, const QString &key,
                                        const QDBusVariant &value)
{
    apply(group, key, value.variant());
}

void PortalAppearance::apply(const QString &group, const QString &key, const QVariant &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber) {
        return;
    }
    if (group == appearanceGroup && key == "color-scheme"_L1) {
        // 1 prefers dark, 2 light, any other value has no preference
        dark_ = number == 1 || number == 2 ? std::optional(number == 1) : std::nullopt;
    } else if (group == appearanceGroup && key == "reduced-motion"_L1) {
        reducedMotion_ = number == 1;
    } else if ((group == gnomeGroup && key == "enable-animations"_L1)
               || (group == kdeGroup && key == "AnimationDurationFactor"_L1)) {
        reducedMotion_ = number == 0;
    } else {
        return;
    }
    Q_EMIT changed();
}

} // namespace vellumo

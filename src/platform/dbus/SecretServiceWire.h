// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

class QDBusArgument;

/// What org.freedesktop.secrets speaks on the bus.
namespace vellumo::secretservice {

inline const QString serviceName = QStringLiteral("org.freedesktop.secrets");
inline const QString servicePath = QStringLiteral("/org/freedesktop/secrets");

inline constexpr auto serviceInterface = "org.freedesktop.Secret.Service";
inline constexpr auto collectionInterface = "org.freedesktop.Secret.Collection";
inline constexpr auto itemInterface = "org.freedesktop.Secret.Item";
inline constexpr auto promptInterface = "org.freedesktop.Secret.Prompt";
inline constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";

using Attributes = QMap<QString, QString>;
using Paths = QList<QDBusObjectPath>;

/// A secret: (oayays).
struct BusSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument &operator<<(QDBusArgument &argument, const BusSecret &secret);
const QDBusArgument &operator>>(const QDBusArgument &argument, BusSecret &secret);

void registerTypes();

[[nodiscard]] QStringList pathsIn(const QVariant &value);
/// Empty for the path that stands for none.
[[nodiscard]] QString pathIn(const QVariant &value);

} // namespace vellumo::secretservice

Q_DECLARE_METATYPE(vellumo::secretservice::BusSecret)

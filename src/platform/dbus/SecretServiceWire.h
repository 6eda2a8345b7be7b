// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>
#include <functional>

class QDBusArgument;

/// Types and calls of org.freedesktop.secrets.
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

/// A secret; the wire type (oayays).
struct BusSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

QDBusArgument &operator<<(QDBusArgument &argument, const BusSecret &secret);
const QDBusArgument &operator>>(const QDBusArgument &argument, BusSecret &secret);

void registerTypes();

using Arguments = QList<QVariant>;
using Reply = std::function<void(const Arguments *answer)>;

/// Calls the keyring without blocking. Runs `then` with the reply's arguments, or with null on an
/// error, on timeout and for another signature. `then` never runs when the context is destroyed
/// first.
void call(const QDBusConnection &bus, QObject *context, const QString &path, const char *interface,
          const char *method, const Arguments &arguments, const char *signature, Reply then);

[[nodiscard]] QStringList pathsIn(const QVariant &value);
/// Returns the path; empty for "/", which means none.
[[nodiscard]] QString pathIn(const QVariant &value);

} // namespace vellumo::secretservice

Q_DECLARE_METATYPE(vellumo::secretservice::BusSecret)

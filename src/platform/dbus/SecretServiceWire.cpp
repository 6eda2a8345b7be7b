// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServiceWire.h"

#include <QDBusArgument>
#include <QDBusMetaType>

using namespace Qt::StringLiterals;

namespace vellumo::secretservice {

QDBusArgument &operator<<(QDBusArgument &argument, const BusSecret &secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, BusSecret &secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

void registerTypes()
{
    qDBusRegisterMetaType<BusSecret>();
    qDBusRegisterMetaType<Attributes>();
}

QStringList pathsIn(const QVariant &value)
{
    QStringList paths;
    for (const QDBusObjectPath &path : qdbus_cast<Paths>(value)) {
        paths.append(path.path());
    }
    return paths;
}

QString pathIn(const QVariant &value)
{
    const QString path = value.value<QDBusObjectPath>().path();
    return path == u"/"_s ? QString() : path;
}

} // namespace vellumo::secretservice

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServiceWatch.h"

#include "platform/dbus/SecretServiceWire.h"
#include "platform/dbus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusServiceWatcher>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

using namespace secretservice;

SecretServiceWatch::SecretServiceWatch(SessionBus &bus, QObject *parent)
    : QObject(parent)
    , bus_(bus)
{
}

void SecretServiceWatch::begin()
{
    if (std::exchange(isWatching_, true)) {
        return;
    }
    QDBusConnection bus = *bus_.connection();
    // No service name: QtDBus would look up its owner in a blocking call.
    for (const QString &signal : {u"CollectionCreated"_s, u"CollectionChanged"_s}) {
        bus.connect(QString(), servicePath, QString::fromLatin1(serviceInterface), signal, this,
                    SLOT(onCollections()));
    }
    auto *owners =
        new QDBusServiceWatcher(serviceName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                Q_EMIT ownerChanged(!owner.isEmpty());
            });
}

void SecretServiceWatch::watchCollection(const QString &path)
{
    if (path == collection_) {
        return;
    }
    QDBusConnection bus = *bus_.connection();
    const auto properties = QString::fromLatin1(propertiesInterface);
    const QString signal = u"PropertiesChanged"_s;
    if (!collection_.isEmpty()) {
        bus.disconnect(QString(), collection_, properties, signal, this,
                       SLOT(onPropertiesChanged(QDBusMessage)));
    }
    collection_ = path;
    bus.connect(QString(), path, properties, signal, this, SLOT(onPropertiesChanged(QDBusMessage)));
}

void SecretServiceWatch::onPropertiesChanged(const QDBusMessage &message)
{
    if (message.signature() != "sa{sv}as"_L1) {
        return;
    }
    const auto values = qdbus_cast<QVariantMap>(message.arguments().at(1));
    if (values.contains(u"Locked"_s) && !values.value(u"Locked"_s).toBool()) {
        Q_EMIT collectionsChanged();
    }
}

} // namespace vellumo

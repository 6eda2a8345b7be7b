// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServiceWire.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo::secretservice {

namespace {

// A keyring that is started by the call may have to read its files first.
constexpr int timeoutMs = 25'000;

} // namespace

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

void call(const QDBusConnection &bus, QObject *context, const QString &path, const char *interface,
          const char *method, const Arguments &arguments, const char *signature, Reply then)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        serviceName, path, QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, timeoutMs), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [signature, then = std::move(then)](QDBusPendingCallWatcher *done) {
                         done->deleteLater();
                         const QDBusMessage reply = done->reply();
                         const bool isAnswer =
                             !done->isError() && reply.signature() == QLatin1StringView(signature);
                         const Arguments answer = isAnswer ? reply.arguments() : Arguments();
                         then(isAnswer ? &answer : nullptr);
                     });
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

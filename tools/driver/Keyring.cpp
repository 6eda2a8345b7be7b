// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/Keyring.h"

#include "driver/Application.h"
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <csignal>

using namespace Qt::StringLiterals;

namespace vellumo::test {

namespace {

const QDBusObjectPath collection(u"/org/freedesktop/secrets/collection/login"_s);

QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.freedesktop.secrets"_s, u"/org/freedesktop/secrets"_s, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

QStringList attributes(const QString &account)
{
    return {u"service"_s, u"app.vellumo.Vellumo"_s, u"account"_s, account};
}

} // namespace

void Keyring::store(const QString &account, const QByteArray &value, const QString &collection)
{
    QStringList command{u"store"_s, u"--label=x"_s};
    if (!collection.isEmpty())
        command.append(u"--collection="_s + collection);
    outputOf(u"secret-tool"_s, command + attributes(account), value);
}

QByteArray Keyring::lookUp(const QString &account)
{
    return outputOf(u"secret-tool"_s, QStringList{u"lookup"_s} + attributes(account));
}

int Keyring::count(const QString &account)
{
    return static_cast<int>(
        outputOf(u"secret-tool"_s, QStringList{u"search"_s, u"--all"_s} + attributes(account))
            .count("\nsecret = "));
}

bool Keyring::lock()
{
    const QVariant paths = QVariant::fromValue(QList<QDBusObjectPath>{collection});
    return call(u"org.freedesktop.Secret.Service"_s, u"Lock"_s, {paths}).type()
        == QDBusMessage::ReplyMessage;
}

bool Keyring::unlock()
{
    // With the password that the desktop was made with, as the keyring's own dialog does it.
    const QDBusMessage session = call(u"org.freedesktop.Secret.Service"_s, u"OpenSession"_s,
                                      {u"plain"_s, QVariant::fromValue(QDBusVariant(QString()))});
    QDBusArgument password;
    password.beginStructure();
    password << session.arguments().at(1).value<QDBusObjectPath>() << QByteArray()
             << QByteArray("private desktop") << u"text/plain"_s;
    password.endStructure();
    return call(u"org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"_s,
                u"UnlockWithMasterPassword"_s,
                {QVariant::fromValue(collection), QVariant::fromValue(password)})
               .type()
        == QDBusMessage::ReplyMessage;
}

void Keyring::signal(int number)
{
    const auto process =
        QDBusConnection::sessionBus().interface()->servicePid(u"org.freedesktop.secrets"_s);
    if (process.isValid())
        kill(static_cast<pid_t>(process.value()), number);
}

} // namespace vellumo::test

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/LoginManager.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString service = u"org.freedesktop.login1"_s;
const QString root = u"/org/freedesktop/login1"_s;
const QString seat = root + u"/seat/seat0"_s;
const QString sessionPath = root + u"/session/_31"_s;

struct SessionOfSeat {
    QString name;
    QDBusObjectPath path;
};

struct UserOfSession {
    uint number;
    QDBusObjectPath path;
};

QDBusArgument &operator<<(QDBusArgument &to, const SessionOfSeat &value)
{
    to.beginStructure();
    to << value.name << value.path;
    to.endStructure();
    return to;
}

QDBusArgument &operator<<(QDBusArgument &to, const UserOfSession &value)
{
    to.beginStructure();
    to << value.number << value.path;
    to.endStructure();
    return to;
}

const QDBusArgument &operator>>(const QDBusArgument &from, SessionOfSeat & /*value*/)
{
    return from;
}

const QDBusArgument &operator>>(const QDBusArgument &from, UserOfSession & /*value*/)
{
    return from;
}

} // namespace

LoginManager::LoginManager() : bus_(QDBusConnection::sessionBus())
{
    qDBusRegisterMetaType<SessionOfSeat>();
    qDBusRegisterMetaType<UserOfSession>();
    bus_.registerVirtualObject(root, this, QDBusConnection::SubPath);
    bus_.registerService(service);
}

LoginManager::~LoginManager()
{
    bus_.unregisterService(service);
    bus_.unregisterObject(root);
}

void LoginManager::setSession(const Session &session)
{
    session_ = session;
    auto changed = QDBusMessage::createSignal(seat, u"org.freedesktop.DBus.Properties"_s,
                                              u"PropertiesChanged"_s);
    changed << u"org.freedesktop.login1.Seat"_s << QVariantMap() << QStringList{u"ActiveSession"_s};
    bus_.send(changed);
}

QString LoginManager::introspect(const QString & /*path*/) const
{
    return {};
}

bool LoginManager::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.path() == seat && message.member() == "Get"_L1) {
        const SessionOfSeat active{session_.isPresent ? u"1"_s : QString(),
                                   QDBusObjectPath(session_.isPresent ? sessionPath : u"/"_s)};
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(active)))));
    }
    if (message.path() == sessionPath && message.member() == "GetAll"_L1) {
        const UserOfSession user{session_.user, QDBusObjectPath(root + u"/user/_1"_s)};
        return connection.send(
            message.createReply(QVariantMap{{u"Id"_s, u"1"_s},
                                            {u"User"_s, QVariant::fromValue(user)},
                                            {u"Class"_s, session_.kind},
                                            {u"Active"_s, session_.isActive},
                                            {u"LockedHint"_s, session_.isLocked},
                                            {u"IdleSinceHint"_s, 0ULL}}));
    }
    return false;
}

} // namespace vellumo

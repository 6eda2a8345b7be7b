// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/TrayHost.h"

#include "driver/Waiting.h"
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QtEndian>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

const QString watcher = u"org.kde.StatusNotifierWatcher"_s;
const QString connectionName = u"tray host"_s;

} // namespace

TrayHost::TrayHost()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName))
{
    bus_.registerObject(u"/StatusNotifierWatcher"_s, this,
                        QDBusConnection::ExportAllProperties
                            | QDBusConnection::ExportScriptableSlots);
    bus_.registerService(watcher);
}

TrayHost::~TrayHost()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

void TrayHost::RegisterStatusNotifierItem(const QString &service)
{
    items_.append(service.startsWith(u'/') ? message().service() : service);
}

bool TrayHost::waitForItem() const
{
    return waitUntil([this] { return !items_.isEmpty(); }, std::chrono::seconds(10));
}

QDBusMessage TrayHost::ask(const QString &path, const QString &interface, const QString &method,
                           const QVariantList &arguments)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(items_.value(items_.size() - 1), path, interface, method);
    call.setArguments(arguments);
    const QDBusPendingCall pending = bus_.asyncCall(call);
    return waitUntil([&] { return pending.isFinished(); }) ? pending.reply() : QDBusMessage();
}

QVariant TrayHost::property(const QString &name)
{
    const QDBusMessage answer = ask(u"/StatusNotifierItem"_s, u"org.freedesktop.DBus.Properties"_s,
                                    u"Get"_s, {u"org.kde.StatusNotifierItem"_s, name});
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

void TrayHost::activate()
{
    ask(u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, u"Activate"_s, {0, 0});
}

QImage TrayHost::icon()
{
    const QVariant value = property(u"IconPixmap"_s);
    if (!value.canConvert<QDBusArgument>())
        return {};
    const auto pixmaps = value.value<QDBusArgument>();
    int width = 0;
    int height = 0;
    QByteArray argb; // in network order
    pixmaps.beginArray();
    if (pixmaps.atEnd())
        return {};
    pixmaps.beginStructure();
    pixmaps >> width >> height >> argb;
    QImage image(width, height, QImage::Format_ARGB32);
    for (int i = 0; i < width * height && argb.size() >= 4 * (i + 1); ++i)
        image.setPixel(i % width, i / width, qFromBigEndian<QRgb>(argb.constData() + 4 * i));
    return image;
}

QList<TrayHost::MenuItem> TrayHost::menu()
{
    const auto path = property(u"Menu"_s).value<QDBusObjectPath>().path();
    const QDBusMessage answer =
        ask(path, u"com.canonical.dbusmenu"_s, u"GetLayout"_s, {0, -1, QStringList()});
    QList<MenuItem> items;
    if (answer.arguments().size() != 2)
        return items;
    const auto root = answer.arguments().at(1).value<QDBusArgument>();
    int id = 0;
    QVariantMap properties;
    root.beginStructure();
    root >> id >> properties;
    root.beginArray();
    while (!root.atEnd()) {
        QDBusVariant child;
        root >> child;
        const auto item = child.variant().value<QDBusArgument>();
        item.beginStructure();
        item >> id >> properties;
        QList<QStringList> shortcuts;
        if (properties.contains(u"shortcut"_s))
            properties[u"shortcut"_s].value<QDBusArgument>() >> shortcuts;
        items.append({id, properties.value(u"label"_s).toString(),
                      properties.value(u"enabled"_s, true).toBool(), shortcuts.value(0)});
    }
    return items;
}

void TrayHost::choose(int menuItem)
{
    ask(property(u"Menu"_s).value<QDBusObjectPath>().path(), u"com.canonical.dbusmenu"_s,
        u"Event"_s,
        {menuItem, u"clicked"_s, QVariant::fromValue(QDBusVariant(QString())), QVariant(0U)});
}

} // namespace vellumo::test

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/AccessibleTree.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

constexpr int timeoutMs = 1000;
constexpr uint showing = 25; // bit of an element's state
constexpr uint screenCoordinates = 0;

struct Reference {
    QString service;
    QString path;
};

class Bus {
public:
    Bus() : connection_(connect()) { }

    [[nodiscard]] QDBusMessage call(const Reference &object, const QString &interface,
                                    const QString &method, const QVariantList &arguments = {}) const
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(object.service, object.path, interface, method);
        message.setArguments(arguments);
        return connection_.call(message, QDBus::Block, timeoutMs);
    }

    [[nodiscard]] QList<Reference> children(const Reference &object) const
    {
        QList<Reference> found;
        const QVariant value =
            call(object, u"org.a11y.atspi.Accessible"_s, u"GetChildren"_s).arguments().value(0);
        if (!value.canConvert<QDBusArgument>())
            return found;
        const auto list = value.value<QDBusArgument>();
        list.beginArray();
        while (!list.atEnd()) {
            Reference child;
            QDBusObjectPath path;
            list.beginStructure();
            list >> child.service >> path;
            list.endStructure();
            child.path = path.path();
            found.append(child);
        }
        list.endArray();
        return found;
    }

    [[nodiscard]] bool isShowing(const Reference &object) const
    {
        const QVariant value =
            call(object, u"org.a11y.atspi.Accessible"_s, u"GetState"_s).arguments().value(0);
        const auto states = qdbus_cast<QList<uint>>(value);
        return !states.isEmpty() && (states.first() & (1U << showing)) != 0;
    }

    [[nodiscard]] AccessibleItem describe(const Reference &object) const
    {
        AccessibleItem item;
        item.name = call(object, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                         {u"org.a11y.atspi.Accessible"_s, u"Name"_s})
                        .arguments()
                        .value(0)
                        .value<QDBusVariant>()
                        .variant()
                        .toString();
        item.role = call(object, u"org.a11y.atspi.Accessible"_s, u"GetRoleName"_s)
                        .arguments()
                        .value(0)
                        .toString();
        const QVariant extents =
            call(object, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {screenCoordinates})
                .arguments()
                .value(0);
        if (extents.canConvert<QDBusArgument>()) {
            int x = 0;
            int y = 0;
            int width = 0;
            int height = 0;
            const auto argument = extents.value<QDBusArgument>();
            argument.beginStructure();
            argument >> x >> y >> width >> height;
            argument.endStructure();
            item.extents = {x, y, width, height};
        }
        return item;
    }

    [[nodiscard]] qint64 processOf(const QString &service) const
    {
        return connection_.interface()->servicePid(service);
    }

    [[nodiscard]] bool isConnected() const { return connection_.isConnected(); }

private:
    static QDBusConnection connect()
    {
        const QString name = u"accessible-tree"_s;
        const QDBusConnection existing(name);
        if (existing.isConnected())
            return existing;
        const QDBusMessage question = QDBusMessage::createMethodCall(
            u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
        const QDBusMessage answer =
            QDBusConnection::sessionBus().call(question, QDBus::Block, timeoutMs);
        return QDBusConnection::connectToBus(answer.arguments().value(0).toString(), name);
    }

    QDBusConnection connection_;
};

void collect(const Bus &bus, const Reference &object, int depth, QList<AccessibleItem> &found)
{
    if (depth == 0)
        return;
    const QList<Reference> children = bus.children(object);
    for (const Reference &child : children) {
        if (!bus.isShowing(child))
            continue;
        found.append(bus.describe(child));
        collect(bus, child, depth - 1, found);
    }
}

} // namespace

QList<AccessibleItem> accessibleItems(qint64 processIdentifier)
{
    constexpr int deepest = 20;
    QList<AccessibleItem> found;
    const Bus bus;
    if (!bus.isConnected())
        return found;
    const Reference registry{u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s};
    const QList<Reference> applications = bus.children(registry);
    for (const Reference &application : applications) {
        if (bus.processOf(application.service) == processIdentifier)
            collect(bus, application, deepest, found);
    }
    return found;
}

} // namespace vellumo::test

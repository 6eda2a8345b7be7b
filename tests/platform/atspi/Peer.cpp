// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// vellumo_atspi_peer TREE...: an application on the accessibility bus with one window for each JSON
// file, on a separate connection, which holds the tree of the file. Prints "ready" when all are
// registered and "read ROLE" for each text that it is asked for. An object of the tree:
//   role, focused, name, text, selections [[start, end]...], fleeting (they are gone once asked
//   for), display, address, toolkit, inactive and title (topmost), elsewhere (the bus name that
//   references to it have), children: one for each U+FFFC of the text, then those that are not in
//   the text.
#include "platform/atspi/AtspiProtocol.h"
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVirtualObject>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace vellumo {
namespace {

QString pathOf(qsizetype index)
{
    return index == 0 ? QStringLiteral("/org/a11y/atspi/accessible/root")
                      : QStringLiteral("/org/a11y/atspi/accessible/%1").arg(index);
}

QString cut(const QString &text, int start, int end)
{
    const QList<uint> points = text.toUcs4();
    const qsizetype to = end < 0 ? points.size() : end;
    return QString::fromUcs4(reinterpret_cast<const char32_t *>(points.constData()) + start,
                             to - start);
}

class Peer : public QDBusVirtualObject {
public:
    Peer(QDBusConnection bus, const QJsonObject &tree) : bus_(std::move(bus))
    {
        const QJsonObject frame{
            {QStringLiteral("role"), 23},
            {QStringLiteral("active"), !tree.value(u"inactive").toBool()},
            {QStringLiteral("name"), tree.value(u"title").toString(QStringLiteral("Peer"))},
            {QStringLiteral("children"), QJsonArray{tree}}};
        add({{QStringLiteral("role"), 75}, {QStringLiteral("children"), QJsonArray{frame}}}, -1);
        toolkit_ = tree.value(u"toolkit").toString();
    }

    QString introspect(const QString & /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const qsizetype index =
            message.path().endsWith(u"root") ? 0 : message.path().section(u'/', -1).toLongLong();
        const auto answer = index < nodes_.size() ? reply(index, message) : QVariantList();
        connection.send(answer.isEmpty()
                            ? message.createErrorReply(QDBusError::UnknownMethod, QString())
                            : message.createReply(answer));
        return true;
    }

private:
    struct Node {
        QJsonObject data;
        qsizetype parent;
        QList<qsizetype> children;
    };

    qsizetype add(const QJsonObject &data, qsizetype parent)
    {
        const qsizetype index = nodes_.size();
        nodes_.append({data, parent, {}});
        for (const QJsonValue child : data.value(u"children").toArray()) {
            const qsizetype added = add(child.toObject(), index);
            nodes_[index].children.append(added);
        }
        return index;
    }

    ObjectReference reference(qsizetype index) const
    {
        const QString service =
            nodes_.at(index).data.value(u"elsewhere").toString(bus_.baseService());
        return {service, pathOf(index)};
    }

    QVariant references(const QList<qsizetype> &indexes) const
    {
        QList<ObjectReference> list;
        for (const qsizetype index : indexes) {
            list.append(reference(index));
        }
        return QVariant::fromValue(list);
    }

    QVariantList reply(qsizetype index, const QDBusMessage &message)
    {
        const QString interface = message.interface().section(u'.', -1);
        if (interface == u"Text" || interface == u"Hypertext") {
            return nodes_.at(index).data.contains(u"text") ? replyText(index, message)
                                                           : QVariantList();
        }
        return interface == u"Properties" ? replyProperty(index, message.arguments().at(1))
                                          : replyObject(index, message);
    }

    QVariantList replyObject(qsizetype index, const QDBusMessage &message) const
    {
        const Node &node = nodes_.at(index);
        const QString member = message.member();
        if (member == u"GetRole") {
            return {static_cast<quint32>(node.data.value(u"role").toInt())};
        }
        if (member == u"GetChildren") {
            return {references(node.children)};
        }
        if (member == u"GetState") {
            quint32 bits = 1U << 25;
            bits |= node.data.value(u"active").toBool() ? 1U << 1 : 0;
            bits |= node.data.value(u"focused").toBool() ? 1U << 12 : 0;
            return {QVariant::fromValue(QList<quint32>{bits, 0})};
        }
        if (member == u"GetMatches") {
            const auto focused = std::ranges::find_if(
                nodes_, [](const Node &each) { return each.data.value(u"focused").toBool(); });
            return {references(focused == nodes_.end()
                                   ? QList<qsizetype>()
                                   : QList<qsizetype>{focused - nodes_.begin()})};
        }
        if (member == u"GetAttributes") {
            const QString display = node.data.value(u"display").toString();
            return {
                QVariant::fromValue(QMap<QString, QString>{{QStringLiteral("display"), display}})};
        }
        if (member == u"GetRelationSet") {
            QList<Relation> relations;
            if (node.data.value(u"active").toBool()) {
                relations.append({Atspi::relationEmbeds, {reference(node.children.constFirst())}});
            }
            return {QVariant::fromValue(relations)};
        }
        if (member == u"GetAttributeValue") {
            const bool isAddress = message.arguments().constFirst() == QStringLiteral("DocURL");
            return {isAddress ? node.data.value(u"address").toString() : QString()};
        }
        return member == u"GetObject" ? QVariantList{QVariant::fromValue(reference(index))}
                                      : QVariantList();
    }

    QVariantList replyProperty(qsizetype index, const QVariant &name) const
    {
        const Node &node = nodes_.at(index);
        QVariant value = QString();
        if (name == QStringLiteral("Name")) {
            value = node.data.value(u"name").toString();
        } else if (name == QStringLiteral("ToolkitName")) {
            value = toolkit_;
        } else if (name == QStringLiteral("Parent")) {
            value = QVariant::fromValue(reference(std::max<qsizetype>(node.parent, 0)));
        }
        return {QVariant::fromValue(QDBusVariant(value))};
    }

    QVariantList replyText(qsizetype index, const QDBusMessage &message)
    {
        Node &node = nodes_[index];
        const QString member = message.member();
        const QVariantList arguments = message.arguments();
        const QString text = node.data.value(u"text").toString();
        const QJsonArray selections = node.data.value(u"selections").toArray();
        if (member == u"GetNSelections") {
            return {static_cast<int>(selections.size())};
        }
        if (member == u"GetSelection") {
            const QJsonArray range = selections.at(arguments.at(0).toInt()).toArray();
            if (node.data.value(u"fleeting").toBool()) {
                node.data.remove(u"selections");
            }
            return {range.at(0).toInt(), range.at(1).toInt()};
        }
        if (member == u"GetText") {
            std::printf("read %d\n", node.data.value(u"role").toInt());
            std::fflush(stdout);
            return {cut(text, arguments.at(0).toInt(), arguments.at(1).toInt())};
        }
        if (member == u"GetLinkIndex") {
            const int offset = arguments.at(0).toInt();
            const bool isLink = cut(text, offset, offset + 1) == QChar(0xFFFC);
            return {isLink ? static_cast<int>(cut(text, 0, offset).count(QChar(0xFFFC))) : -1};
        }
        const int link = member == u"GetLink" ? arguments.at(0).toInt() : -1;
        return link >= 0 && link < node.children.size()
            ? QVariantList{QVariant::fromValue(reference(node.children.at(link)))}
            : QVariantList();
    }

    QDBusConnection bus_;
    QList<Node> nodes_;
    QString toolkit_;
};

/// Shows the tree. Returns whether it can. `registered` runs when the registry knows it.
bool show(const QString &file, std::vector<std::unique_ptr<Peer>> &peers,
          const std::function<void()> &registered)
{
    QFile tree(file);
    const QDBusMessage addressReply =
        QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
            QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
            QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    auto bus = QDBusConnection::connectToBus(addressReply.arguments().value(0).toString(), file);
    if (!tree.open(QIODevice::ReadOnly) || !bus.isConnected()) {
        return false;
    }
    peers.push_back(std::make_unique<Peer>(bus, QJsonDocument::fromJson(tree.readAll()).object()));
    bus.registerVirtualObject(QStringLiteral("/org/a11y/atspi/accessible"), peers.back().get(),
                              QDBusConnection::SubPath);
    QDBusMessage embed = QDBusMessage::createMethodCall(Atspi::registryService(), pathOf(0),
                                                        QStringLiteral("org.a11y.atspi.Socket"),
                                                        QStringLiteral("Embed"));
    embed.setArguments({QVariant::fromValue(ObjectReference{bus.baseService(), pathOf(0)})});
    // The registry asks back before it answers. A call that runs an event loop until then can miss
    // an answer that comes quickly.
    auto *embedded = new QDBusPendingCallWatcher(bus.asyncCall(embed), qApp);
    QObject::connect(embedded, &QDBusPendingCallWatcher::finished,
                     [registered](const QDBusPendingCallWatcher *call) {
                         if (call->isError()) {
                             QCoreApplication::exit(1);
                         } else {
                             registered();
                         }
                     });
    return true;
}

int run(const QStringList &files)
{
    registerAtspiTypes();
    std::vector<std::unique_ptr<Peer>> peers;
    qsizetype registered = 0;
    const auto count = [&] {
        if (++registered == files.size()) {
            std::puts("ready");
            std::fflush(stdout);
        }
    };
    const bool shown =
        std::ranges::all_of(files, [&](const QString &file) { return show(file, peers, count); });
    return shown ? QCoreApplication::exec() : 1;
}

} // namespace
} // namespace vellumo

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    return vellumo::run(QCoreApplication::arguments().mid(1));
}

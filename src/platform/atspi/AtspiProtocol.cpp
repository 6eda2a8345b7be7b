// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/atspi/AtspiProtocol.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace vellumo {

bool ObjectReference::isNull() const
{
    return service.isEmpty() || path.isEmpty() || path == u"/org/a11y/atspi/null";
}

QDBusArgument &operator<<(QDBusArgument &argument, const ObjectReference &reference)
{
    argument.beginStructure();
    // QtDBus marshals a default value once to determine its signature; an empty path would be
    // invalid.
    const QString path = reference.path.isEmpty() ? QStringLiteral("/") : reference.path;
    argument << reference.service << QDBusObjectPath(path);
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ObjectReference &reference)
{
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> reference.service >> path;
    argument.endStructure();
    reference.path = path.path();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Relation &relation)
{
    argument.beginStructure();
    argument << relation.type << relation.targets;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Relation &relation)
{
    argument.beginStructure();
    argument >> relation.type >> relation.targets;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MatchRule &rule)
{
    argument.beginStructure();
    argument << rule.states << rule.stateMatch << rule.attributes << rule.attributeMatch
             << rule.roles << rule.roleMatch << rule.interfaces << rule.interfaceMatch
             << rule.invert;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, MatchRule &rule)
{
    argument.beginStructure();
    argument >> rule.states >> rule.stateMatch >> rule.attributes >> rule.attributeMatch
        >> rule.roles >> rule.roleMatch >> rule.interfaces >> rule.interfaceMatch >> rule.invert;
    argument.endStructure();
    return argument;
}

void registerAtspiTypes()
{
    qDBusRegisterMetaType<ObjectReference>();
    qDBusRegisterMetaType<QList<ObjectReference>>();
    qDBusRegisterMetaType<Relation>();
    qDBusRegisterMetaType<QList<Relation>>();
    qDBusRegisterMetaType<QMap<QString, QString>>();
    qDBusRegisterMetaType<MatchRule>();
}

namespace Atspi {

ObjectReference rootOf(const QString &service)
{
    return {service, QStringLiteral("/org/a11y/atspi/accessible/root")};
}

ObjectReference busDaemon()
{
    return {QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus")};
}

QString registryService()
{
    return QStringLiteral("org.a11y.atspi.Registry");
}

void registerEvent(const QDBusConnection &bus, const QString &event)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        registryService(), QStringLiteral("/org/a11y/atspi/registry"),
        QString::fromLatin1(registry), QStringLiteral("RegisterEvent"));
    message.setArguments({event, QStringList(), QString()});
    bus.send(message);
}

bool hasState(const StateSet &states, State state)
{
    const auto bit = static_cast<quint32>(state);
    const auto word = static_cast<qsizetype>(bit / 32);
    return word < states.size() && ((states.at(word) >> (bit % 32)) & 1U) != 0;
}

bool isMenuRole(Role role)
{
    switch (role) {
    case Role::CheckMenuItem:
    case Role::Menu:
    case Role::MenuBar:
    case Role::MenuItem:
    case Role::PopupMenu:
    case Role::RadioMenuItem:
    case Role::TearoffMenuItem:
        return true;
    default:
        return false;
    }
}

bool isDocumentRole(Role role)
{
    switch (role) {
    case Role::DocumentFrame:
    case Role::DocumentSpreadsheet:
    case Role::DocumentPresentation:
    case Role::DocumentText:
    case Role::DocumentWeb:
    case Role::DocumentEmail:
        return true;
    default:
        return false;
    }
}

bool isBlockRole(Role role)
{
    switch (role) {
    case Role::ColumnHeader:
    case Role::InternalFrame:
    case Role::List:
    case Role::ListItem:
    case Role::Panel:
    case Role::RowHeader:
    case Role::Separator:
    case Role::Table:
    case Role::TableCell:
    case Role::Header:
    case Role::Footer:
    case Role::Paragraph:
    case Role::Caption:
    case Role::Heading:
    case Role::Page:
    case Role::Section:
    case Role::Form:
    case Role::TableRow:
    case Role::Comment:
    case Role::Grouping:
    case Role::BlockQuote:
    case Role::Definition:
    case Role::Article:
    case Role::Landmark:
    case Role::Log:
    case Role::DescriptionList:
    case Role::DescriptionTerm:
    case Role::DescriptionValue:
    case Role::Footnote:
        return true;
    default:
        return isDocumentRole(role);
    }
}

bool isControlRole(Role role)
{
    switch (role) {
    case Role::CheckBox:
    case Role::ComboBox:
    case Role::PasswordText:
    case Role::RadioButton:
    case Role::SpinButton:
    case Role::Entry:
    case Role::ListBox:
        return true;
    default:
        return isMenuRole(role);
    }
}

} // namespace Atspi
} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class QDBusConnection;

namespace vellumo {

/// An object of some application on the accessibility bus; the wire type (so).
struct ObjectReference {
    QString service; ///< unique bus name
    QString path;

    /// Applications return a well-known path instead of no object.
    [[nodiscard]] bool isNull() const;
    friend bool operator==(const ObjectReference &, const ObjectReference &) = default;
};

/// One relation of GetRelationSet; the wire type (ua(so)).
struct Relation {
    quint32 type = 0;
    QList<ObjectReference> targets;
};

/// The match rule of Collection.GetMatches; the wire type (aiia{ss}iaiiasib).
struct MatchRule {
    enum MatchType : qint32 { All = 1, Any = 2 };

    QList<int> states; ///< two words of state bits, the lower first
    int stateMatch = All;
    QMap<QString, QString> attributes;
    int attributeMatch = All;
    QList<int> roles; ///< words of role bits
    int roleMatch = All;
    QStringList interfaces;
    int interfaceMatch = All;
    bool invert = false;
};

QDBusArgument &operator<<(QDBusArgument &argument, const ObjectReference &reference);
const QDBusArgument &operator>>(const QDBusArgument &argument, ObjectReference &reference);
QDBusArgument &operator<<(QDBusArgument &argument, const Relation &relation);
const QDBusArgument &operator>>(const QDBusArgument &argument, Relation &relation);
QDBusArgument &operator<<(QDBusArgument &argument, const MatchRule &rule);
const QDBusArgument &operator>>(const QDBusArgument &argument, MatchRule &rule);

/// Registers the types above with QtDBus.
void registerAtspiTypes();

namespace Atspi {

inline constexpr const char *accessible = "org.a11y.atspi.Accessible";
inline constexpr const char *application = "org.a11y.atspi.Application";
inline constexpr const char *collection = "org.a11y.atspi.Collection";
inline constexpr const char *document = "org.a11y.atspi.Document";
inline constexpr const char *hyperlink = "org.a11y.atspi.Hyperlink";
inline constexpr const char *hypertext = "org.a11y.atspi.Hypertext";
inline constexpr const char *text = "org.a11y.atspi.Text";
inline constexpr const char *registry = "org.a11y.atspi.Registry";
inline constexpr const char *properties = "org.freedesktop.DBus.Properties";

/// Path of the root object of each application and of the registry.
ObjectReference rootOf(const QString &service);

QString registryService();

/// The bus itself, and its interface.
ObjectReference busDaemon();
inline constexpr const char *busInterface = "org.freedesktop.DBus";

/// Asks applications to send an event to this connection, such as "window:activate".
void registerEvent(const QDBusConnection &bus, const QString &event);

/// Bits of Accessible.GetState, numbered by the protocol.
enum class State : quint8 {
    Active = 1,
    Defunct = 6,
    Editable = 7,
    Focused = 12,
    Showing = 25,
    Visible = 30
};

/// Accessible.GetState returns two words.
using StateSet = QList<quint32>;
bool hasState(const StateSet &states, State state);

/// Values of Accessible.GetRole, numbered by the protocol.
enum class Role : quint32 {
    Invalid = 0,
    Alert = 2,
    CheckBox = 7,
    CheckMenuItem = 8,
    ColumnHeader = 10,
    ComboBox = 11,
    Dialog = 16,
    FileChooser = 19,
    Frame = 23,
    InternalFrame = 28,
    List = 31,
    ListItem = 32,
    Menu = 33,
    MenuBar = 34,
    MenuItem = 35,
    Panel = 39,
    PasswordText = 40,
    PopupMenu = 41,
    PushButton = 43,
    RadioButton = 44,
    RadioMenuItem = 45,
    RowHeader = 47,
    ScrollPane = 49,
    Separator = 50,
    SpinButton = 52,
    Table = 55,
    TableCell = 56,
    TearoffMenuItem = 59,
    Terminal = 60,
    Text = 61,
    ToggleButton = 62,
    Viewport = 68,
    Window = 69,
    Header = 71,
    Footer = 72,
    Paragraph = 73,
    Application = 75,
    Entry = 79,
    Caption = 81,
    DocumentFrame = 82,
    Heading = 83,
    Page = 84,
    Section = 85,
    Form = 87,
    TableRow = 90,
    DocumentSpreadsheet = 92,
    DocumentPresentation = 93,
    DocumentText = 94,
    DocumentWeb = 95,
    DocumentEmail = 96,
    Comment = 97,
    ListBox = 98,
    Grouping = 99,
    BlockQuote = 105,
    Definition = 108,
    Article = 109,
    Landmark = 110,
    Log = 111,
    DescriptionList = 121,
    DescriptionTerm = 122,
    DescriptionValue = 123,
    Footnote = 124,
};

bool isMenuRole(Role role);
bool isDocumentRole(Role role);

/// Returns whether an object of this role is laid out as a block of its own lines.
bool isBlockRole(Role role);

/// Returns whether the role is a form control, whose content is not part of the text around it.
bool isControlRole(Role role);

/// Types of relations in GetRelationSet, numbered by the protocol.
inline constexpr quint32 relationFlowsTo = 10; ///< from a paragraph to the next one
inline constexpr quint32 relationFlowsFrom = 11;
inline constexpr quint32 relationEmbeds = 13; ///< from a window's frame to the document in front

} // namespace Atspi
} // namespace vellumo

Q_DECLARE_METATYPE(vellumo::ObjectReference)
Q_DECLARE_METATYPE(vellumo::Relation)
Q_DECLARE_METATYPE(vellumo::MatchRule)

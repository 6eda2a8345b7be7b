// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AltKeyListener.h"

#include "platform/atspi/AtspiProtocol.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <atomic>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Of org.a11y.atspi.DeviceEventController.RegisterKeystrokeListener; the wire type (iisi).
struct Key {
    qint32 code = 0; ///< 0: any
    qint32 symbol = 0;
    QString name;
    qint32 unused = 0;
};

/// The wire type (bbb).
struct ListenerMode {
    bool isSynchronous = false;
    bool isPreemptive = false;
    bool isGlobal = false;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Key &key)
{
    argument.beginStructure();
    argument << key.code << key.symbol << key.name << key.unused;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Key &key)
{
    argument.beginStructure();
    argument >> key.code >> key.symbol >> key.name >> key.unused;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const ListenerMode &mode)
{
    argument.beginStructure();
    argument << mode.isSynchronous << mode.isPreemptive << mode.isGlobal;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ListenerMode &mode)
{
    argument.beginStructure();
    argument >> mode.isSynchronous >> mode.isPreemptive >> mode.isGlobal;
    argument.endStructure();
    return argument;
}

constexpr qint32 symbolAltLeft = 0xffe9;
constexpr qint32 symbolAltRight = 0xffea;

/// Sets of modifiers, by the bits of X11, with which the keys are reported: none, or Alt itself for
/// the release, also with Shift or Control pressed since, each also with Num Lock.
constexpr quint32 modifierSets[] = {0, 8, 9, 12, 16, 24, 25, 28};

constexpr quint32 pressesAndReleases = 3;
constexpr quint32 typePress = 0;

/// Longer than the key is held for a tap.
constexpr std::chrono::milliseconds maxHold{1500};

QString listenerPath()
{
    return u"/org/vellumo/AltKeys"_s;
}

void registerTypes()
{
    qDBusRegisterMetaType<Key>();
    qDBusRegisterMetaType<QList<Key>>();
    qDBusRegisterMetaType<ListenerMode>();
}

} // namespace

void AltKeyListener::open(const QString &address)
{
    static std::atomic<int> count = 0;
    registerTypes();
    connectionName_ = u"vellumo-alt-keys-%1"_s.arg(++count);
    QDBusConnection bus = QDBusConnection::connectToBus(address, connectionName_);
    if (!bus.isConnected() || !bus.registerVirtualObject(listenerPath(), this)) {
        return;
    }
    for (const quint32 modifiers : modifierSets) {
        auto call = QDBusMessage::createMethodCall(
            Atspi::registryService(), u"/org/a11y/atspi/registry/deviceeventcontroller"_s,
            u"org.a11y.atspi.DeviceEventController"_s, u"RegisterKeystrokeListener"_s);
        const QList<Key> keys{{0, symbolAltLeft, u"Alt_L"_s, 0},
                              {0, symbolAltRight, u"Alt_R"_s, 0}};
        call.setArguments({QVariant::fromValue(QDBusObjectPath(listenerPath())),
                           QVariant::fromValue(keys), modifiers, pressesAndReleases,
                           QVariant::fromValue(ListenerMode())});
        bus.send(call);
    }
}

void AltKeyListener::close()
{
    if (!connectionName_.isEmpty()) {
        QDBusConnection::disconnectFromBus(connectionName_); // which ends the registration as well
        connectionName_.clear();
    }
    note(false);
}

QString AltKeyListener::introspect(const QString & /*path*/) const
{
    return {};
}

bool AltKeyListener::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.member() != "NotifyEvent"_L1) {
        return false;
    }
    constexpr bool isConsumed = false;
    connection.send(message.createReply(isConsumed));
    // Type, key symbol, key code, modifiers, time, text, whether it is text. The wire type of the
    // numbers after the symbol differs between toolkits.
    const QVariantList arguments = message.arguments();
    if (arguments.isEmpty() || !arguments.constFirst().canConvert<QDBusArgument>()) {
        return true;
    }
    const auto event = arguments.constFirst().value<QDBusArgument>();
    if (!event.currentSignature().startsWith("(ui"_L1)) {
        return true;
    }
    quint32 type = 0;
    qint32 symbol = 0;
    event.beginStructure();
    event >> type >> symbol;
    event.endStructure(); // which also ends the reading of the rest
    if (symbol == symbolAltLeft || symbol == symbolAltRight) {
        note(type == typePress);
    }
    return true;
}

void AltKeyListener::note(bool isPress)
{
    {
        const QMutexLocker lock(&mutex_);
        if (isHeld_ == isPress && !isPress) {
            return;
        }
        isHeld_ = isPress;
        heldSince_ = std::chrono::steady_clock::now();
    }
    if (isPress) {
        Q_EMIT pressed(std::chrono::steady_clock::now());
    } else {
        releasedCondition_.wakeAll();
        Q_EMIT released(std::chrono::steady_clock::now());
    }
}

bool AltKeyListener::waitForRelease(QDeadlineTimer deadline)
{
    const QMutexLocker lock(&mutex_);
    if (std::chrono::steady_clock::now() - heldSince_ > maxHold) {
        return true; // its release was not reported: the application has ended
    }
    while (isHeld_ && releasedCondition_.wait(&mutex_, deadline)) { }
    return !isHeld_;
}

} // namespace vellumo

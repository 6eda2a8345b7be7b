// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/FocusEvents.h"

namespace vellumo {
namespace {

// More applications than anyone has open; the oldest guesses are worth little.
constexpr qsizetype mostApplications = 64;

void registerEvent(const QDBusConnection &bus, const QString &event)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        Atspi::registryService(), QStringLiteral("/org/a11y/atspi/registry"),
        QString::fromLatin1(Atspi::registry), QStringLiteral("RegisterEvent"));
    message.setArguments({event, QStringList(), QString()});
    bus.send(message);
}

ObjectReference senderOf(const QDBusMessage &message)
{
    return {message.service(), message.path()};
}

} // namespace

void FocusEvents::listenOn(const QDBusConnection &bus)
{
    QDBusConnection connection = bus;
    const auto objectEvents = QStringLiteral("org.a11y.atspi.Event.Object");
    connection.connect(QString(), QString(), objectEvents, QStringLiteral("StateChanged"),
                       {QStringLiteral("focused")}, QString(), this,
                       SLOT(onStateChanged(QDBusMessage)));
    connection.connect(QString(), QString(), objectEvents, QStringLiteral("TextSelectionChanged"),
                       this, SLOT(onTextSelectionChanged(QDBusMessage)));
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Window"),
                       QStringLiteral("Activate"), this, SLOT(onWindowActivated(QDBusMessage)));
    registerEvent(connection, QStringLiteral("object:state-changed:focused"));
    registerEvent(connection, QStringLiteral("object:text-selection-changed"));
    registerEvent(connection, QStringLiteral("window:activate"));
}

void FocusEvents::clear()
{
    focused_.clear();
    before_.clear();
}

ObjectReference FocusEvents::focusedIn(const QString &service) const
{
    return focused_.value(service);
}

ObjectReference FocusEvents::focusedBefore(const QString &service) const
{
    return before_.value(service);
}

void FocusEvents::remember(const ObjectReference &focused)
{
    if (focused_.size() >= mostApplications && !focused_.contains(focused.service)) {
        clear();
    }
    focused_.insert(focused.service, focused);
}

void FocusEvents::forget(const QString &service)
{
    focused_.remove(service);
}

void FocusEvents::onStateChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 2 || arguments.at(0).toString() != u"focused") {
        return;
    }
    const bool isFocused = arguments.at(1).toInt() != 0;
    const ObjectReference last = focusedIn(message.service());
    if (!last.isNull() && isFocused != (last == senderOf(message))) {
        before_.insert(message.service(), last);
    }
    if (isFocused) {
        remember(senderOf(message));
    } else if (last == senderOf(message)) {
        forget(message.service());
    }
}

void FocusEvents::onTextSelectionChanged(const QDBusMessage &message)
{
    // Without a better guess: a text that the user selects in usually has the focus.
    if (focusedIn(message.service()).isNull()) {
        remember(senderOf(message));
    }
}

void FocusEvents::onWindowActivated(const QDBusMessage &message)
{
    // Another window of the same application: each has a focused object of its own.
    forget(message.service());
    before_.remove(message.service());
}

} // namespace vellumo

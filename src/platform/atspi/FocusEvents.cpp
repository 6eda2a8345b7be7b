// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/FocusEvents.h"

#include <QDeadlineTimer>
#include <algorithm>

namespace vellumo {
namespace {

// Maximum number of applications; the oldest guesses are the least useful.
constexpr qsizetype maxFollowed = 64;
constexpr qsizetype maxAwakened = 1024;

// Dragging the mouse causes dozens of changes; these reach back beyond a double tap.
constexpr qint64 sameChangeMs = 20;
constexpr qsizetype maxChanges = 32;

/// Sends the calls of a read in advance, for an empty range, without waiting for replies. Browsers
/// collect the texts of a page at the first request, which takes tens of milliseconds; this moves
/// them out of the time after a double tap.
void awaken(const QDBusConnection &bus, const ObjectReference &object)
{
    const auto ask = [&](const ObjectReference &whom, const char *interface, const char *method,
                         const QVariantList &arguments = {}) {
        auto message = QDBusMessage::createMethodCall(
            whom.service, whom.path, QString::fromLatin1(interface), QString::fromLatin1(method));
        message.setArguments(arguments);
        bus.send(message);
    };
    ask(Atspi::rootOf(object.service), Atspi::accessible, "GetChildren");
    ask(object, Atspi::accessible, "GetRole");
    ask(object, Atspi::text, "GetNSelections");
    ask(object, Atspi::text, "GetSelection", {0});
    ask(object, Atspi::text, "GetText", {0, 0});
}

ObjectReference senderOf(const QDBusMessage &message)
{
    return {message.service(), message.path()};
}

} // namespace

void FocusEvents::listenOn(const QDBusConnection &bus)
{
    QDBusConnection connection = bus;
    bus_ = bus;
    const auto objectEvents = QStringLiteral("org.a11y.atspi.Event.Object");
    connection.connect(QString(), QString(), objectEvents, QStringLiteral("StateChanged"),
                       {QStringLiteral("focused")}, QString(), this,
                       SLOT(onStateChanged(QDBusMessage)));
    connection.connect(QString(), QString(), objectEvents, QStringLiteral("TextSelectionChanged"),
                       this, SLOT(onTextSelectionChanged(QDBusMessage)));
    connection.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Window"),
                       QStringLiteral("Activate"), this, SLOT(onWindowActivated(QDBusMessage)));
    Atspi::registerEvent(connection, QStringLiteral("object:state-changed:focused"));
    Atspi::registerEvent(connection, QStringLiteral("object:text-selection-changed"));
    Atspi::registerEvent(connection, QStringLiteral("window:activate"));
}

void FocusEvents::clear()
{
    awakened_.clear();
    focused_.clear();
    before_.clear();
    selectionChanges_.clear();
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
    if (focused_.size() >= maxFollowed && !focused_.contains(focused.service)) {
        clear();
    }
    focused_.insert(focused.service, focused);
}

void FocusEvents::wake(const ObjectReference &object)
{
    const QString key = object.service + object.path;
    if (bus_ && object.service != bus_->baseService() && !awakened_.contains(key)) {
        if (awakened_.size() >= maxAwakened) {
            awakened_.clear();
        }
        awakened_.insert(key);
        awaken(*bus_, object);
    }
}

void FocusEvents::noteSelectionChange(const QString &service)
{
    if (selectionChanges_.size() >= maxFollowed && !selectionChanges_.contains(service)) {
        selectionChanges_.clear();
    }
    QList<qint64> &times = selectionChanges_[service];
    const qint64 now = QDeadlineTimer::current().deadline();
    if (!times.isEmpty() && now - times.constLast() < sameChangeMs) {
        times.removeLast();
    } else if (times.size() >= maxChanges) {
        times.removeFirst();
    }
    times.append(now);
}

std::optional<std::chrono::milliseconds>
FocusEvents::sinceSelectionChange(const QString &service, std::chrono::milliseconds atLeast) const
{
    const QList<qint64> times = selectionChanges_.value(service);
    const qint64 now = QDeadlineTimer::current().deadline();
    const auto change = std::find_if(times.crbegin(), times.crend(),
                                     [&](qint64 time) { return now - time >= atLeast.count(); });
    return change == times.crend() ? std::nullopt
                                   : std::optional(std::chrono::milliseconds(now - *change));
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
    noteSelectionChange(message.service());
    wake(senderOf(message));
    // Fallback: a text in which the user selects usually has the focus.
    if (focusedIn(message.service()).isNull()) {
        remember(senderOf(message));
    }
}

void FocusEvents::onWindowActivated(const QDBusMessage &message)
{
    // Another window of the same application has its own focused object.
    forget(message.service());
    before_.remove(message.service());
}

} // namespace vellumo

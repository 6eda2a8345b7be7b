// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/KGlobalAccelAction.h"

#include "platform/dbus/ApplicationName.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QKeySequence>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString path = u"/kglobalaccel"_s;
const QString accelInterface = u"org.kde.KGlobalAccel"_s;

// Flags of setShortcut.
constexpr uint setPresent = 2; ///< the program runs: grab the keys
constexpr uint noAutoloading = 4; ///< use these keys instead of the stored ones

constexpr int answerTimeoutMs = 5000;
constexpr int releaseTimeoutMs = 200;

QList<int> keysIn(const QDBusMessage &answer)
{
    auto keys = qdbus_cast<QList<int>>(answer.arguments().value(0));
    keys.removeAll(0); // none
    return keys;
}

bool isError(const QDBusMessage &answer)
{
    return answer.type() != QDBusMessage::ReplyMessage;
}

QString readable(const QList<int> &keys)
{
    return QKeySequence(keys.constFirst()).toString(QKeySequence::PortableText);
}

} // namespace

KGlobalAccelAction::KGlobalAccelAction(const QDBusConnection &bus, const KWinVersion &kwin,
                                       Action action, QObject *parent)
    : DesktopChange(parent)
    , bus_(bus)
    , kwin_(kwin)
    , action_(std::move(action))
    , registry_(bus, u"org.kde.kglobalaccel"_s)
{
    connect(&registry_, &BusName::ownerChanged, this, &KGlobalAccelAction::refresh);
    connect(&kwin_, &KWinVersion::changed, this, &KGlobalAccelAction::refresh);
}

KGlobalAccelAction::~KGlobalAccelAction()
{
    if (isGrabbed_ && !followed_.isEmpty()) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(followed_, path, accelInterface, u"setInactive"_s);
        message << id();
        bus_.call(message, QDBus::Block, releaseTimeoutMs); // one without a reply may not be sent
    }
}

QStringList KGlobalAccelAction::id() const
{
    return {ApplicationName::id, action_.name, u"vellumo"_s, action_.description};
}

void KGlobalAccelAction::refresh()
{
    follow();
    const auto version = kwin_.number();
    if (!version) {
        return; // its answer follows
    }
    if (version->isNull() || *version < action_.since || followed_.isEmpty()) {
        settle(State::Unavailable);
        return;
    }
    call(u"shortcut"_s, {id()}, [this](const QDBusMessage &answer) {
        const QList<int> keys = keysIn(answer);
        if (isError(answer)) {
            settle(State::Unavailable);
        } else if (keys.isEmpty()) {
            findFree([this](int key) { settle(key == 0 ? State::Taken : State::Possible); });
        } else {
            if (!std::exchange(isGrabbed_, true)) {
                const auto ignore = [](const QDBusMessage & /*answer*/) {};
                call(u"doRegister"_s, {id()}, ignore);
                call(u"setShortcut"_s,
                     {id(), QVariant::fromValue(QList<int>()), QVariant::fromValue(setPresent)},
                     ignore);
            }
            settle(State::Made, readable(keys));
        }
    });
}

/// Receives the signals of the registry that runs now.
void KGlobalAccelAction::follow()
{
    const QString owner = registry_.owner();
    if (owner == followed_) {
        return;
    }
    const auto each = [this](auto change) {
        (bus_.*change)(followed_, QString(), u"org.kde.kglobalaccel.Component"_s,
                       u"globalShortcutPressed"_s, this, SLOT(onPressed(QString, QString)));
        (bus_.*change)(followed_, path, accelInterface, u"yourShortcutsChanged"_s, this,
                       SLOT(onKeysChanged(QStringList)));
    };
    using Change = bool (QDBusConnection::*)(const QString &, const QString &, const QString &,
                                             const QString &, QObject *, const char *);
    if (!followed_.isEmpty()) {
        each(static_cast<Change>(&QDBusConnection::disconnect));
    }
    followed_ = owner;
    isGrabbed_ = false;
    if (!followed_.isEmpty()) {
        each(static_cast<Change>(&QDBusConnection::connect));
    }
}

/// Calls `then` with the first candidate that has no other use; 0 when there is none.
void KGlobalAccelAction::findFree(const std::function<void(int key)> &then, qsizetype candidate)
{
    if (candidate == action_.keys.size()) {
        then(0);
        return;
    }
    const int key = action_.keys[candidate];
    call(u"isGlobalShortcutAvailable"_s, {key, QString(ApplicationName::id)},
         [this, then, candidate, key](const QDBusMessage &answer) {
             if (answer.arguments().value(0).toBool()) {
                 then(key);
             } else {
                 findFree(then, candidate + 1);
             }
         });
}

void KGlobalAccelAction::make()
{
    findFree([this](int key) {
        if (key == 0) {
            refresh();
            Q_EMIT finished(false);
            return;
        }
        call(u"doRegister"_s, {id()}, [](const QDBusMessage & /*answer*/) {});
        call(u"setShortcut"_s,
             {id(), QVariant::fromValue(QList<int>{key}),
              QVariant::fromValue(setPresent | noAutoloading)},
             [this, key](const QDBusMessage &answer) {
                 isGrabbed_ = keysIn(answer).contains(key);
                 if (isGrabbed_) {
                     settle(State::Made, readable({key}));
                 } else {
                     call(u"unregister"_s, {QString(ApplicationName::id), action_.name},
                          [this](const QDBusMessage & /*answer*/) { refresh(); });
                 }
                 Q_EMIT finished(isGrabbed_);
             });
    });
}

void KGlobalAccelAction::undo()
{
    call(u"unregister"_s, {QString(ApplicationName::id), action_.name},
         [this](const QDBusMessage &answer) {
             const bool isDone = !isError(answer);
             if (isDone) {
                 isGrabbed_ = false;
                 settle(State::Possible);
             }
             Q_EMIT finished(isDone);
         });
}

void KGlobalAccelAction::onPressed(const QString &component, const QString &action)
{
    if (component == ApplicationName::id && action == action_.name) {
        Q_EMIT activated();
    }
}

void KGlobalAccelAction::onKeysChanged(const QStringList &action)
{
    if (action.value(0) == ApplicationName::id && action.value(1) == action_.name) {
        refresh();
    }
}

void KGlobalAccelAction::call(const QString &method, const QVariantList &arguments,
                              const Handler &handle)
{
    QDBusMessage message = QDBusMessage::createMethodCall(followed_, path, accelInterface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    auto *watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, answerTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, handle] {
        watcher->deleteLater();
        handle(watcher->reply());
    });
}

void KGlobalAccelAction::settle(State state, const QString &keys)
{
    if (state != state_ || keys != keys_) {
        state_ = state;
        keys_ = keys;
        Q_EMIT changed();
    }
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/dbus/BusName.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int answerTimeoutMs = 5000;

} // namespace

BusName::BusName(const QDBusConnection &bus, const QString &name, QObject *parent) : QObject(parent)
{
    auto *owners =
        new QDBusServiceWatcher(name, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString & /*service*/, const QString & /*from*/, const QString &to) {
                hasChanged_ = true;
                setOwner(to);
            });
    QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    question << name;
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(question, answerTimeoutMs), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &BusName::onAnswer);
}

void BusName::onAnswer(QDBusPendingCallWatcher *call)
{
    call->deleteLater();
    const QDBusPendingReply<QString> answer = *call;
    if (!hasChanged_) {
        owner_ = answer.isValid() ? answer.value() : QString();
        Q_EMIT ownerChanged();
    }
}

void BusName::setOwner(const QString &owner)
{
    if (owner != owner_) {
        owner_ = owner;
        Q_EMIT ownerChanged();
    }
}

} // namespace vellumo

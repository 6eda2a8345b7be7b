// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/TrayHosts.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr auto watcherService = "org.kde.StatusNotifierWatcher"_L1;
constexpr auto watcherPath = "/StatusNotifierWatcher"_L1;
constexpr int hostTimeoutMs = 5000;

} // namespace

TrayHosts::TrayHosts(QObject *parent) : QObject(parent) { }

TrayHosts::~TrayHosts() = default;

void TrayHosts::watch(QDBusConnection bus)
{
    bus_ = std::make_unique<QDBusConnection>(bus);
    // No service name: QtDBus would look up its owner in a blocking call.
    bus.connect(QString(), watcherPath, watcherService, u"StatusNotifierHostRegistered"_s, this,
                SLOT(onHostRegistered()));
    auto *owners = new QDBusServiceWatcher(watcherService, bus,
                                           QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString & /*service*/, const QString & /*from*/, const QString &to) {
                // Also when another host took over, since icons have to be registered again.
                setPresent(false);
                if (!to.isEmpty()) {
                    ask();
                }
            });
    ask();
}

void TrayHosts::ask()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        watcherService, watcherPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << QString(watcherService) << u"IsStatusNotifierHostRegistered"_s;
    question.setAutoStartService(false);
    auto *call = new QDBusPendingCallWatcher(bus_->asyncCall(question, hostTimeoutMs), this);
    connect(call, &QDBusPendingCallWatcher::finished, this,
            [this, number = ++asked_](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusPendingReply<QDBusVariant> answer = *finished;
                if (number == asked_ && answer.isValid() && answer.value().variant().toBool()) {
                    setPresent(true);
                }
            });
}

void TrayHosts::setPresent(bool isPresent)
{
    if (isPresent != isPresent_) {
        isPresent_ = isPresent;
        Q_EMIT changed(isPresent);
    }
}

} // namespace vellumo

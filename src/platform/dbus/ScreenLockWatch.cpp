// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/dbus/ScreenLockWatch.h"

#include "platform/dbus/Background.h"
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int askTimeoutMs = 5000;

struct Saver {
    QLatin1StringView service; ///< also the interface's name
    QLatin1StringView path;
};

/// A desktop has one or two of them.
constexpr std::array savers{
    Saver{"org.freedesktop.ScreenSaver"_L1, "/org/freedesktop/ScreenSaver"_L1},
    Saver{"org.gnome.ScreenSaver"_L1, "/org/gnome/ScreenSaver"_L1},
    Saver{"org.cinnamon.ScreenSaver"_L1, "/org/cinnamon/ScreenSaver"_L1},
    Saver{"org.mate.ScreenSaver"_L1, "/org/mate/ScreenSaver"_L1},
    Saver{"org.xfce.ScreenSaver"_L1, "/org/xfce/ScreenSaver"_L1}};

constexpr auto loginService = "org.freedesktop.login1"_L1;
constexpr auto loginSession = "org.freedesktop.login1.Session"_L1;
constexpr auto ownSession = "/org/freedesktop/login1/session/auto"_L1;
constexpr auto properties = "org.freedesktop.DBus.Properties"_L1;

const QString systemBusName = u"vellumo-system"_s;

} // namespace

ScreenLockWatch::~ScreenLockWatch()
{
    if (system_) {
        QDBusConnection::disconnectFromBus(systemBusName);
    }
}

void ScreenLockWatch::followSession(const QDBusConnection &session)
{
    session_ = std::make_unique<QDBusConnection>(session);
    auto *owners = new QDBusServiceWatcher(this);
    owners->setConnection(session);
    owners->setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    for (const auto &[service, path] : savers) {
        // No service name: QtDBus would look up its owner in a blocking call.
        session_->connect(QString(), QString(), service, u"ActiveChanged"_s, this,
                          SLOT(onSaverChanged(QDBusMessage)));
        owners->addWatchedService(service);
        askSaver(service);
    }
    connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &service) { askSaver(service); });
}

void ScreenLockWatch::followLogins()
{
    auto bus = std::make_shared<std::optional<QDBusConnection>>();
    runInBackground(
        this,
        [bus] { *bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, systemBusName); },
        [this, bus] {
            if (*bus && (*bus)->isConnected()) {
                listenToLogins(**bus);
            }
        });
}

void ScreenLockWatch::listenToLogins(QDBusConnection system)
{
    system_ = std::make_unique<QDBusConnection>(system);
    // The signal has the session's real path; the query below uses the alias for our session.
    system.connect(QString(), QString(), properties, u"PropertiesChanged"_s, {loginSession},
                   QString(), this, SLOT(onLoginChanged(QDBusMessage)));
    askLogin();
}

void ScreenLockWatch::onSaverChanged(const QDBusMessage &message)
{
    askSaver(message.interface());
}

void ScreenLockWatch::onLoginChanged(const QDBusMessage &message)
{
    if (message.arguments().value(0).toString() == loginSession) {
        askLogin();
    }
}

void ScreenLockWatch::askSaver(const QString &service)
{
    for (const Saver &saver : savers) {
        if (saver.service == service) {
            ask(*session_,
                QDBusMessage::createMethodCall(service, saver.path, service, u"GetActive"_s),
                service);
        }
    }
}

void ScreenLockWatch::askLogin()
{
    auto question = QDBusMessage::createMethodCall(loginService, ownSession, properties, u"Get"_s);
    question << QString(loginSession) << u"LockedHint"_s;
    ask(*system_, question, loginService);
}

/// No answer counts as "not locked": a screen saver that crashed must not disable double taps.
void ScreenLockWatch::ask(const QDBusConnection &bus, QDBusMessage question, const QString &service)
{
    question.setAutoStartService(false);
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(question, askTimeoutMs), this);
    connect(call, &QDBusPendingCallWatcher::finished, this,
            [this, service, number = ++asked_[service]](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (number != asked_.value(service)) {
                    return;
                }
                QVariant answer =
                    finished->isError() ? QVariant() : finished->reply().arguments().value(0);
                if (answer.metaType() == QMetaType::fromType<QDBusVariant>()) {
                    answer = answer.value<QDBusVariant>().variant();
                }
                if (answer.toBool()) {
                    locked_.insert(service);
                } else {
                    locked_.remove(service);
                }
            });
}

} // namespace vellumo

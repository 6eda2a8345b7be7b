// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiBus.h"

#include "platform/dbus/Background.h"
#include "platform/dbus/SessionBus.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
#include <atomic>
#include <dlfcn.h>
#include <utility>

namespace vellumo {
namespace {

constexpr int firstRetryMs = 250;
constexpr int maxRetryMs = 30'000;
constexpr int addressTimeoutMs = 5000;

/// Limits the size of a message. A larger one closes the connection, which is then reopened.
/// Without the limit such a message is read into memory first. QtDBus does not expose this setting
/// of libdbus.
void limitMessages(const QDBusConnection &bus)
{
    constexpr long maxMessageBytes = 8L * 1024 * 1024;
    using SetLimit = void (*)(void *connection, long bytes);
    const auto setLimit =
        reinterpret_cast<SetLimit>(dlsym(RTLD_DEFAULT, "dbus_connection_set_max_message_size"));
    if (setLimit != nullptr && bus.internalPointer() != nullptr) {
        setLimit(bus.internalPointer(), maxMessageBytes);
    }
}

// QtDBus identifies connections by names that are unique in the process.
QString freshConnectionName()
{
    static std::atomic<int> count = 0;
    return QStringLiteral("vellumo-accessibility-%1").arg(++count);
}

} // namespace

AtspiBus::AtspiBus(SessionBus &session, QObject *parent)
    : QObject(parent)
    , session_(session)
    , retryDelayMs_(firstRetryMs)
{
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &AtspiBus::find);
    connect(&session_, &SessionBus::opened, this, &AtspiBus::find);
}

AtspiBus::~AtspiBus()
{
    blockSignals(true); // receivers may be half destroyed
    close();
}

void AtspiBus::setWanted(bool wanted)
{
    wanted_ = wanted;
    hasFailed_ = hasFailed_ && wanted;
    if (wanted) {
        find();
    } else {
        retry_.stop();
        close();
    }
}

std::optional<QDBusConnection> AtspiBus::connection()
{
    if (bus_ && !bus_->isConnected()) {
        onDisconnected();
    }
    return bus_;
}

void AtspiBus::find()
{
    const auto session = session_.connection();
    if (!wanted_ || !session || bus_ || opening_) {
        return;
    }
    opening_ = true;
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    auto *watcher = new QDBusPendingCallWatcher(session->asyncCall(call, addressTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusPendingReply<QString> reply = *finished;
                if (reply.isError() || reply.value().isEmpty()) {
                    opening_ = false;
                    fail();
                } else {
                    open(reply.value());
                }
            });
}

void AtspiBus::open(const QString &address)
{
    auto result = std::make_shared<std::optional<QDBusConnection>>();
    const QString name = freshConnectionName();
    runInBackground(
        this, [result, address, name] { *result = QDBusConnection::connectToBus(address, name); },
        [this, result, address] {
            opening_ = false;
            if (!*result) {
                return;
            }
            const QString opened = (*result)->name();
            if (wanted_ && (*result)->isConnected()) {
                adopt(**result, address);
            } else {
                result->reset();
                QDBusConnection::disconnectFromBus(opened);
                fail();
            }
        });
}

void AtspiBus::adopt(const QDBusConnection &bus, const QString &address)
{
    address_ = address;
    limitMessages(bus);
    bus_ = bus;
    retryDelayMs_ = firstRetryMs;
    hasFailed_ = false;
    // libdbus's signal for the end of a connection.
    bus_->connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                  this, SLOT(onDisconnected()));
    Q_EMIT opened(bus);
}

void AtspiBus::onDisconnected()
{
    close();
    retryLater();
}

void AtspiBus::close()
{
    if (bus_) {
        const QString name = bus_->name();
        bus_.reset();
        QDBusConnection::disconnectFromBus(name);
        Q_EMIT closed();
    }
}

void AtspiBus::fail()
{
    retryLater();
    if (wanted_ && !std::exchange(hasFailed_, true)) {
        Q_EMIT failed();
    }
}

void AtspiBus::retryLater()
{
    if (wanted_ && !retry_.isActive()) {
        retry_.start(retryDelayMs_);
        retryDelayMs_ = std::min(retryDelayMs_ * 2, maxRetryMs);
    }
}

} // namespace vellumo

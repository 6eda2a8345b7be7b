// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/RunningInstance.h"

#include "platform/dbus/ApplicationName.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <optional>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int busTimeoutMs = 3000;
// The instance may be starting or reading a selection.
constexpr int instanceTimeoutMs = 15000;

const QString connectionName = u"running instance"_s;

QDBusMessage callFor(const InstanceRequest &request)
{
    QVariantMap platformData;
    if (const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN"); !token.isEmpty()) {
        platformData.insert(ApplicationName::activationToken, token);
    }
    const auto call = [](const QString &method) {
        return QDBusMessage::createMethodCall(ApplicationName::id, ApplicationName::path,
                                              ApplicationName::interface, method);
    };
    if (!request.action.isEmpty()) {
        return call(u"ActivateAction"_s) << request.action << QVariantList() << platformData;
    }
    if (!request.urls.isEmpty()) {
        return call(u"Open"_s) << request.urls << platformData;
    }
    return call(u"Activate"_s) << platformData;
}

} // namespace

RunningInstance::RunningInstance()
    : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName))
{
}

RunningInstance::~RunningInstance()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

bool RunningInstance::exists() const
{
    if (!bus_.isConnected()) {
        return false;
    }
    QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    question << QString(ApplicationName::id);
    const QDBusReply<bool> answer = bus_.call(question, QDBus::Block, busTimeoutMs);
    return answer.isValid() && answer.value();
}

bool RunningInstance::waitUntil(const std::function<bool()> &condition,
                                const std::function<int()> &wait, QDeadlineTimer deadline) const
{
    if (condition()) {
        return true;
    }
    if (!bus_.isConnected()) {
        return false;
    }
    QEventLoop loop;
    const auto look = [&] {
        if (condition()) {
            loop.exit(true);
        }
    };
    const QDBusServiceWatcher owners(ApplicationName::id, bus_,
                                     QDBusServiceWatcher::WatchForRegistration);
    QObject::connect(&owners, &QDBusServiceWatcher::serviceRegistered, &loop, look);
    std::optional<QSocketNotifier> news;
    if (const int descriptor = wait(); descriptor >= 0) {
        news.emplace(descriptor, QSocketNotifier::Read);
        QObject::connect(&*news, &QSocketNotifier::activated, &loop, [&] {
            news->setEnabled(false);
            look();
        });
    }
    QTimer::singleShot(std::chrono::milliseconds(deadline.remainingTime()), &loop,
                       [&] { loop.exit(condition()); });
    // checked again after the watch began, so that no change is missed
    return condition() || loop.exec() != 0;
}

RunningInstance::Answer RunningInstance::handOver(const InstanceRequest &request) const
{
    QDBusMessage call = callFor(request);
    call.setAutoStartService(false);
    const QDBusMessage answer = bus_.call(call, QDBus::Block, instanceTimeoutMs);
    if (answer.type() == QDBusMessage::ReplyMessage) {
        return Answer::Accepted;
    }
    switch (QDBusError(answer).type()) {
    case QDBusError::InvalidArgs:
        return Answer::Refused;
    case QDBusError::ServiceUnknown:
        return Answer::Gone;
    default:
        return exists() ? Answer::None : Answer::Gone;
    }
}

std::optional<RunningInstance::Report> RunningInstance::report() const
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        ApplicationName::id, ApplicationName::path, ApplicationName::reportInterface, u"Write"_s);
    call.setAutoStartService(false);
    const QVariantList answer = bus_.call(call, QDBus::Block, instanceTimeoutMs).arguments();
    return answer.size() == 2 ? std::optional(Report{answer[0].toString(), answer[1].toBool()})
                              : std::nullopt;
}

} // namespace vellumo

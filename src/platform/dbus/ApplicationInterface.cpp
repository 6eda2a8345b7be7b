// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/ApplicationInterface.h"

#include "platform/ProgramEnvironment.h"
#include "platform/dbus/ApplicationName.h"

#include <QDBusAbstractAdaptor>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr uint doNotQueue = 4;
constexpr uint primaryOwner = 1;
constexpr uint alreadyOwner = 4;
constexpr int requestTimeoutMs = 5000;
constexpr qsizetype maxTokenLength = 1024;

/// Keeps the token with which a Wayland compositor lets a window take the keyboard. Qt uses it at
/// the next activation of a window.
void takeToken(const QVariantMap &platformData)
{
    const QByteArray token = platformData.value(ApplicationName::activationToken).toByteArray();
    if (!token.isEmpty() && token.size() <= maxTokenLength) {
        programEnvironment::setHere("XDG_ACTIVATION_TOKEN", token);
    }
}

/// Argument names are those of the interface's definition, since they appear in its introspection.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(ApplicationInterface &application)
        : QDBusAbstractAdaptor(&application)
        , application_(application)
    {
    }

public Q_SLOTS:
    void Activate(const QVariantMap &platform_data)
    {
        takeToken(platform_data);
        application_.activate();
    }

    void Open(const QStringList &uris, const QVariantMap &platform_data)
    {
        takeToken(platform_data);
        application_.open(uris);
    }

    void ActivateAction(const QString &action_name, const QVariantList &parameter,
                        const QVariantMap &platform_data)
    {
        takeToken(platform_data);
        application_.activateAction(action_name, !parameter.isEmpty());
    }

private:
    ApplicationInterface &application_;
};

class ReportAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.vellumo.Report1")

public:
    explicit ReportAdaptor(ApplicationInterface &application)
        : QDBusAbstractAdaptor(&application)
        , application_(application)
    {
    }

public Q_SLOTS:
    /// The reply is sent later. What this returns only declares its types.
    QString Write(bool &can_work)
    {
        can_work = false;
        application_.report();
        return {};
    }

private:
    ApplicationInterface &application_;
};

} // namespace

ApplicationInterface::ApplicationInterface(QObject *parent) : QObject(parent)
{
    new ApplicationAdaptor(*this);
    new ReportAdaptor(*this);
}

void ApplicationInterface::offerOn(QDBusConnection bus)
{
    bus_ = bus;
    bus.registerObject(ApplicationName::path, this, QDBusConnection::ExportAdaptors);
    QDBusMessage request =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"RequestName"_s);
    request << QString(ApplicationName::id) << doNotQueue;
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(request, requestTimeoutMs), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *done) {
        done->deleteLater();
        const QDBusPendingReply<uint> answer = *done;
        if (answer.isValid() && answer.value() != primaryOwner && answer.value() != alreadyOwner) {
            Q_EMIT nameTaken();
        }
    });
}

void ApplicationInterface::stop()
{
    isStopped_ = true;
    if (bus_) {
        QDBusMessage release =
            QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                           u"org.freedesktop.DBus"_s, u"ReleaseName"_s);
        release << QString(ApplicationName::id);
        bus_->send(release);
    }
}

bool ApplicationInterface::refusesAll() const
{
    const bool refuses = isStopped_ && calledFromDBus();
    if (refuses) {
        sendErrorReply(QDBusError::ServiceUnknown, u"The program is about to end"_s);
    }
    return refuses;
}

void ApplicationInterface::schedule(std::function<void()> work)
{
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

void ApplicationInterface::refuse(const QString &why) const
{
    if (calledFromDBus()) {
        sendErrorReply(QDBusError::InvalidArgs, why);
    }
}

void ApplicationInterface::report()
{
    if (refusesAll()) {
        return;
    }
    if (!writeReport) {
        sendErrorReply(QDBusError::NotSupported, u"No report"_s);
        return;
    }
    setDelayedReply(true);
    writeReport([bus = connection(), call = message()](const QString &text, bool canWork) {
        bus.send(call.createReply({text, canWork}));
    });
}

void ApplicationInterface::activate()
{
    if (!refusesAll()) {
        schedule([this] { Q_EMIT activationRequested(); });
    }
}

void ApplicationInterface::open(const QStringList &urls)
{
    if (refusesAll()) {
        return;
    }
    const bool isTooMuch = urls.size() > maxUrls
        || std::any_of(urls.begin(), urls.end(),
                       [](const QString &url) { return url.size() > maxUrlLength; });
    if (isTooMuch) {
        refuse(u"More than can be opened at once"_s);
    } else {
        schedule([this, urls] { Q_EMIT openRequested(urls); });
    }
}

void ApplicationInterface::activateAction(const QString &name, bool hasParameter)
{
    if (refusesAll()) {
        return;
    }
    const auto action = actions.constFind(name);
    if (action == actions.constEnd() || hasParameter) {
        refuse(u"No such action"_s);
    } else {
        schedule(*action);
    }
}

} // namespace vellumo

#include "ApplicationInterface.moc"

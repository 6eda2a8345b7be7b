// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AtspiTrust.h"

#include "platform/ConsentPrompting.h"
#include "platform/DefaultsStore.h"
#include "platform/Diagnostics.h"
#include "platform/atspi/AtspiProtocol.h"
#include "platform/dbus/SessionBus.h"
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QPointer>
#include <QTimer>
#include <chrono>

namespace vellumo {
namespace {

using namespace std::chrono_literals;

// Maximum time that the start waits for the session bus, and for the switch's state.
constexpr auto startTimeout = 50ms;
constexpr int switchTimeoutMs = 3000;
constexpr auto busyDelay = 1s; // before an unanswered query is repeated

QString launcherService()
{
    return QStringLiteral("org.a11y.Bus");
}

QString launcherPath()
{
    return QStringLiteral("/org/a11y/bus");
}

QString statusInterface()
{
    return QStringLiteral("org.a11y.Status");
}

QString switchName()
{
    return QStringLiteral("IsEnabled");
}

QDBusMessage propertyCall(const char *method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(launcherService(), launcherPath(),
                                                          QString::fromLatin1(Atspi::properties),
                                                          QString::fromLatin1(method));
    message.setArguments(arguments);
    return message;
}

QDBusMessage getSwitch()
{
    return propertyCall("Get", {statusInterface(), switchName()});
}

} // namespace

AtspiTrust::AtspiTrust(SessionBus &session, DefaultsStore &defaults, TrustSettings settings,
                       ConsentPrompting &prompting, QObject *parent)
    : QObject(parent)
    , session_(session)
    , defaults_(defaults)
    , settings_(std::move(settings))
    , prompting_(prompting)
{
    connect(&defaults_, &DefaultsStore::changed, this, [this](const QString &key) {
        if (key == settings_.consent) {
            Q_EMIT changed();
        }
    });
    connect(&session_, &SessionBus::opened, this, &AtspiTrust::watchSwitch);
    session_.open();
    if (hasConsent()) {
        session_.waitUntilOpened(startTimeout);
    }
    starting_ = false;
}

bool AtspiTrust::isLeftOff() const
{
    return defaults_.value(settings_.leftOff).toBool();
}

bool AtspiTrust::isTrusted() const
{
    return enabled_.value_or(false) && hasConsent();
}

bool AtspiTrust::requestTrust()
{
    if (isTrusted()) {
        return true;
    }
    if (!hasConsent() || wasEnabled_ || (enabled_.has_value() && isLeftOff())) {
        ask();
    } else if (!enabled_.has_value()) {
        switchOnWanted_ = true;
        refresh();
    } else {
        switchOn();
    }
    return isTrusted();
}

void AtspiTrust::refresh()
{
    const auto bus = session_.connection();
    if (bus && !fetching_) {
        fetch(bus->asyncCall(getSwitch(), switchTimeoutMs));
    }
}

void AtspiTrust::withdrawConsent()
{
    switchOnWanted_ = false;
    defaults_.setValue(settings_.consent, QVariant());
    defaults_.setValue(settings_.leftOff, QVariant());
}

bool AtspiTrust::hasConsent() const
{
    return defaults_.value(settings_.consent).toBool();
}

void AtspiTrust::watchSwitch()
{
    auto bus = session_.connection();
    if (!bus) {
        return;
    }
    // No service name: QtDBus would look up its owner in a blocking call.
    bus->connect(QString(), launcherPath(), QString::fromLatin1(Atspi::properties),
                 QStringLiteral("PropertiesChanged"), this,
                 SLOT(onPropertiesChanged(QDBusMessage)));
    auto *watcher = new QDBusServiceWatcher(launcherService(), *bus,
                                            QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this,
            &AtspiTrust::onServiceOwnerChanged);

    const QDBusPendingCall call =
        bus->asyncCall(getSwitch(), starting_ ? int(startTimeout.count()) : switchTimeoutMs);
    if (starting_) {
        QDBusPendingCall waiting = call;
        waiting.waitForFinished();
    }
    fetch(call);
    if (starting_ && call.error().type() == QDBusError::NoReply) {
        refresh(); // the desktop may be too busy to answer during the start
    }
}

void AtspiTrust::onServiceOwnerChanged(const QString & /*service*/)
{
    // A restarted service has lost the switch's state; the user did not turn it off.
    if (isTrusted()) {
        switchOn();
    } else {
        refresh();
    }
}

void AtspiTrust::onPropertiesChanged(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (message.signature() != u"sa{sv}as" || arguments.at(0).toString() != statusInterface()) {
        return;
    }
    const auto values = qdbus_cast<QVariantMap>(arguments.at(1));
    const auto value = values.constFind(switchName());
    if (value != values.constEnd()) {
        adopt(value->toBool());
    } else {
        refresh();
    }
}

void AtspiTrust::adopt(std::optional<bool> enabled)
{
    const bool before = isTrusted();
    enabled_ = enabled;
    wasEnabled_ = wasEnabled_ || enabled.value_or(false);
    if (enabled.value_or(false) && isLeftOff()) {
        defaults_.setValue(settings_.leftOff, QVariant());
    }
    if (enabled.has_value() && std::exchange(switchOnWanted_, false) && !*enabled) {
        requestTrust();
    }
    if (isTrusted() != before) {
        Q_EMIT changed();
    }
}

void AtspiTrust::fetch(const QDBusPendingCall &call)
{
    fetching_ = true;
    whenFinished(call, [this](const QDBusPendingCall &finished) {
        fetching_ = false;
        const QDBusMessage reply = finished.reply();
        if (!finished.isError() && !reply.arguments().isEmpty()) {
            adopt(reply.arguments().constFirst().value<QDBusVariant>().variant().toBool());
        } else if (finished.error().type() != QDBusError::NoReply) {
            reportProblem(
                QStringLiteral("the desktop has no accessibility service; other applications "
                               "cannot be read"));
            adopt(std::nullopt);
        } else if (!enabled_.has_value() && !starting_) {
            // The desktop is too busy to answer. Retry, since nothing can be read until then and no
            // signal reports a switch that does not change.
            QTimer::singleShot(busyDelay, this, &AtspiTrust::refresh);
        }
    });
}

void AtspiTrust::switchOn()
{
    auto bus = session_.connection();
    if (!bus) {
        switchOnWanted_ = true;
        return;
    }
    const QDBusMessage call = propertyCall(
        "Set", {statusInterface(), switchName(), QVariant::fromValue(QDBusVariant(true))});
    whenFinished(bus->asyncCall(call, switchTimeoutMs), [this](const QDBusPendingCall &finished) {
        if (finished.isError()) {
            reportProblem(QStringLiteral("the desktop's accessibility service could not be "
                                         "switched on"));
        }
        refresh();
    });
}

void AtspiTrust::reportProblem(const QString &problem)
{
    if (hasConsent() && !std::exchange(isProblemReported_, true)) {
        printDiagnostic(problem);
    }
}

void AtspiTrust::ask()
{
    prompting_.ask([trust = QPointer(this)](bool allowed) {
        if (trust) {
            trust->onAnswered(allowed);
        }
    });
}

void AtspiTrust::onAnswered(bool allowed)
{
    if (!allowed) {
        // An earlier consent remains valid: reading resumes when the user turns the switch on.
        // Until then no start turns it on by itself.
        if (hasConsent()) {
            defaults_.setValue(settings_.leftOff, true);
        }
        return;
    }
    const bool isNews = !hasConsent();
    defaults_.setValue(settings_.consent, true);
    defaults_.setValue(settings_.leftOff, QVariant());
    if (!isNews) {
        Q_EMIT changed();
    }
    if (!enabled_.value_or(false)) {
        switchOn();
    }
}

void AtspiTrust::whenFinished(const QDBusPendingCall &call,
                              std::function<void(const QDBusPendingCall &)> handler)
{
    if (call.isFinished()) {
        handler(call);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [handler = std::move(handler)](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                handler(*finished);
            });
}

} // namespace vellumo

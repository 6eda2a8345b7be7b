// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/ShellCompanion.h"

#include "platform/dbus/SessionBus.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto companionPath = "/app/vellumo/Companion"_L1;
constexpr auto companion = "app.vellumo.Companion"_L1;
constexpr auto messageBus = "org.freedesktop.DBus"_L1;

constexpr int shellTimeoutMs = 5000;
constexpr qsizetype maxReportLength = 4096;

/// A tap that is reported later than this is taken as one of now less this time.
constexpr auto maxDelay = 1s;

} // namespace

ShellCompanion::ShellCompanion(SessionBus &bus, IsCompositor isCompositor)
    : bus_(bus)
    , isCompositor_(std::move(isCompositor))
    , taps_(*this)
{
    if (bus_.hasOpened()) {
        watchShell();
    } else {
        connect(&bus_, &SessionBus::opened, this, &ShellCompanion::watchShell);
    }
}

void ShellCompanion::watchShell()
{
    if (const auto bus = bus_.connection()) {
        shell_ = std::make_unique<BusName>(*bus, u"org.gnome.Shell"_s);
        connect(shell_.get(), &BusName::ownerChanged, this, &ShellCompanion::onShellChanged);
    }
}

void ShellCompanion::onShellChanged()
{
    if (!compositor_.isEmpty()) {
        subscribe(false);
        compositor_.clear();
    }
    setLive(false);
    const QString owner = shell_->owner();
    if (owner.isEmpty()) {
        return;
    }
    auto *watcher =
        new QDBusPendingCallWatcher(call(messageBus, u"/org/freedesktop/DBus"_s, messageBus,
                                         u"GetConnectionUnixProcessID"_s, {owner}),
                                    this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, owner] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> process = *watcher;
        if (process.isValid() && owner == shell_->owner() && isCompositor_(process.value())) {
            compositor_ = owner;
            subscribe(true);
            follow();
        }
    });
}

void ShellCompanion::subscribe(bool isOn)
{
    auto bus = bus_.connection();
    const auto set = [this, isOn, &bus](const QString &signal, const char *slot) {
        if (isOn) {
            bus->connect(compositor_, companionPath, companion, signal, this, slot);
        } else {
            bus->disconnect(compositor_, companionPath, companion, signal, this, slot);
        }
    };
    set(u"Available"_s, SLOT(follow()));
    set(u"Ended"_s, SLOT(onEnded()));
    set(u"Window"_s, SLOT(onWindow(qulonglong, int, QString, QString, QString)));
    set(u"Tapped"_s, SLOT(onTapped(qlonglong)));
}

void ShellCompanion::setFollowing(bool isFollowing)
{
    if (isFollowing == std::exchange(isFollowing_, isFollowing)) {
        return;
    }
    if (isFollowing) {
        follow();
    } else {
        if (isLive_) {
            call(compositor_, companionPath, companion, u"Unfollow"_s);
        }
        setLive(false);
    }
}

/// A shell without the extension answers with an error.
void ShellCompanion::follow()
{
    if (!isFollowing_ || compositor_.isEmpty()) {
        return;
    }
    auto *watcher =
        new QDBusPendingCallWatcher(call(compositor_, companionPath, companion, u"Follow"_s), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, number = ++asked_] {
        watcher->deleteLater();
        if (!watcher->isError() && isFollowing_ && number == asked_) {
            setLive(true);
        }
    });
}

void ShellCompanion::onEnded()
{
    setLive(false);
}

void ShellCompanion::setLive(bool isLive)
{
    if (!isLive) {
        ++asked_;
    }
    if (isLive != std::exchange(isLive_, isLive)) {
        Q_EMIT liveChanged();
        Q_EMIT taps_.reachChanged();
    }
}

void ShellCompanion::onWindow(qulonglong window, int process, const QString &application,
                              const QString &className, const QString &title)
{
    if (isFollowing_) { // the first report may overtake the answer of Follow
        Q_EMIT windowReported({.id = window,
                               .process = process,
                               .application = application.left(maxReportLength),
                               .className = className.left(maxReportLength),
                               .title = title.left(maxReportLength)});
    }
}

/// The time is in microseconds on the monotonic clock, which is the steady clock of this machine.
void ShellCompanion::onTapped(qlonglong time)
{
    if (isLive_) {
        const auto now = std::chrono::steady_clock::now();
        const TapSource::Time at{std::chrono::microseconds(time)};
        Q_EMIT taps_.tapped(std::clamp(at, now - maxDelay, now));
    }
}

QDBusPendingCall ShellCompanion::call(const QString &service, const QString &path,
                                      const QString &interface, const QString &method,
                                      const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return bus_.connection()->asyncCall(message, shellTimeoutMs);
}

} // namespace vellumo

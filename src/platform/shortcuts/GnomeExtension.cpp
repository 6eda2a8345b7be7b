// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/GnomeExtension.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStandardPaths>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString uuid = u"vellumo@vellumo.app"_s;
const QString shellPath = u"/org/gnome/Shell"_s;
const QString extensionsInterface = u"org.gnome.Shell.Extensions"_s;

constexpr std::chrono::seconds switchTime{5};

/// States of an extension, as the shell numbers them.
constexpr int active = 1;
constexpr int failed = 3;
constexpr int ofAnotherVersion = 4;

bool isInstalled()
{
    return !QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                   u"gnome-shell/extensions/%1/metadata.json"_s.arg(uuid))
                .isEmpty();
}

} // namespace

GnomeExtension::GnomeExtension(const QDBusConnection &bus, QObject *parent)
    : DesktopChange(parent)
    , bus_(bus)
    , shell_(bus, u"org.gnome.Shell"_s)
{
    deadline_.setSingleShot(true);
    connect(&deadline_, &QTimer::timeout, this, [this] {
        if (expected_ == State::Made) { // extensions may be off altogether
            (void)call(u"DisableExtension"_s);
        }
        end(false);
    });
    connect(&shell_, &BusName::ownerChanged, this, &GnomeExtension::follow);
}

void GnomeExtension::follow()
{
    const auto slot = SLOT(onStateChanged(QString, QVariantMap));
    const QString signal = u"ExtensionStateChanged"_s;
    if (!followed_.isEmpty()) {
        bus_.disconnect(followed_, shellPath, extensionsInterface, signal, this, slot);
    }
    followed_ = shell_.owner();
    if (!followed_.isEmpty()) {
        bus_.connect(followed_, shellPath, extensionsInterface, signal, this, slot);
    }
    refresh();
}

void GnomeExtension::refresh()
{
    if (shell_.owner().isEmpty()) {
        settle(State::Unavailable);
        return;
    }
    auto *watcher = new QDBusPendingCallWatcher(call(u"GetExtensionInfo"_s), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<QVariantMap> answer = *watcher;
        take(answer.isValid() ? answer.value() : QVariantMap());
    });
}

void GnomeExtension::onStateChanged(const QString &extension, const QVariantMap &information)
{
    if (extension == uuid) {
        take(information);
    }
}

/// Takes what the shell knows about the extension; empty when it does not know it.
void GnomeExtension::take(const QVariantMap &information)
{
    if (information.isEmpty()) {
        settle(isInstalled() ? State::AfterLogin : State::Unavailable);
        return;
    }
    const int state = information.value(u"state"_s).toInt();
    settle(state == active                                    ? State::Made
               : state == failed || state == ofAnotherVersion ? State::Unavailable
                                                              : State::Possible);
}

void GnomeExtension::setOn(bool isOn)
{
    expected_ = isOn ? State::Made : State::Possible;
    deadline_.start(switchTime);
    auto *watcher = new QDBusPendingCallWatcher(
        call(isOn ? u"EnableExtension"_s : u"DisableExtension"_s), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<bool> answer = *watcher;
        if (answer.isValid() && answer.value()) {
            refresh(); // the change itself may follow, with a signal
        } else {
            end(false);
        }
    });
}

void GnomeExtension::settle(State state)
{
    if (state != std::exchange(state_, state)) {
        Q_EMIT changed();
    }
    if (state == expected_) {
        end(true);
    }
}

void GnomeExtension::end(bool hasSucceeded)
{
    deadline_.stop();
    if (std::exchange(expected_, {})) {
        Q_EMIT finished(hasSucceeded);
    }
}

QDBusPendingCall GnomeExtension::call(const QString &method) const
{
    auto message =
        QDBusMessage::createMethodCall(shell_.owner(), shellPath, extensionsInterface, method);
    message << uuid;
    constexpr int timeoutMs = 5000;
    return bus_.asyncCall(message, timeoutMs);
}

} // namespace vellumo

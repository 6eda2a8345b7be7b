// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/KWinScript.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr auto serviceName = "org.kde.KWin"_L1;
constexpr auto scriptingPath = "/Scripting"_L1;
constexpr auto scripting = "org.kde.kwin.Scripting"_L1;
constexpr auto busDaemon = "org.freedesktop.DBus"_L1;

constexpr int answerTimeoutMs = 5000;
constexpr int unloadTimeoutMs = 200;

QDir scriptFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
                + u"/vellumo/kwin"_s);
}

/// Name of the script of a process; also that of its file, less the suffix.
QString scriptName(qint64 process)
{
    return u"app.vellumo.Vellumo-%1"_s.arg(process);
}

QString ownScript()
{
    return scriptName(QCoreApplication::applicationPid());
}

QString fileOf(const QString &script)
{
    return scriptFolder().filePath(script + u".js"_s);
}

bool writeScript(const QString &source)
{
    if (!QDir().mkpath(scriptFolder().path())) {
        return false;
    }
    QFile file(fileOf(ownScript()));
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
        && file.write(source.toUtf8()) >= 0;
}

} // namespace

KWinScript::KWinScript(Source source, IsCompositor isCompositor)
    : source_(std::move(source))
    , isCompositor_(std::move(isCompositor))
{
}

KWinScript::~KWinScript()
{
    if (runner_.isEmpty()) {
        return;
    }
    auto message =
        QDBusMessage::createMethodCall(runner_, scriptingPath, scripting, u"unloadScript"_s);
    message << ownScript();
    bus_->call(message, QDBus::Block, unloadTimeoutMs); // a message without a reply may not be sent
    QFile::remove(fileOf(ownScript()));
}

void KWinScript::follow(const QDBusConnection &bus)
{
    bus_ = bus;
    kwin_.emplace(bus, serviceName);
    connect(&*kwin_, &BusName::ownerChanged, this, &KWinScript::onOwnerChanged);
}

void KWinScript::onOwnerChanged()
{
    const QString owner = kwin_->owner();
    if (!std::exchange(runner_, QString()).isEmpty()) {
        Q_EMIT ended();
    }
    if (owner.isEmpty()) {
        return;
    }
    onAnswer(call(busDaemon, u"/org/freedesktop/DBus"_s, busDaemon, u"GetConnectionUnixProcessID"_s,
                  {owner}),
             [this, owner](const QDBusMessage &answer) {
                 const qint64 process = answer.arguments().value(0).toLongLong();
                 if (owner == kwin_->owner() && process > 0 && isCompositor_(process)) {
                     load(owner);
                 }
             });
}

void KWinScript::load(const QString &owner)
{
    if (!writeScript(source_(bus_->baseService()))) {
        return;
    }
    runner_ = owner;
    unloadForgotten();
    onAnswer(
        call(owner, scriptingPath, scripting, u"loadScript"_s, {fileOf(ownScript()), ownScript()}),
        [this, owner](const QDBusMessage &answer) {
            const int script = answer.arguments().value(0, -1).toInt();
            if (owner == runner_ && script >= 0) {
                run(script, u"/Scripting/Script%1"_s.arg(script)); // from KWin 6 on
            }
        });
}

void KWinScript::run(int script, const QString &path)
{
    onAnswer(call(runner_, path, u"org.kde.kwin.Script"_s, u"run"_s),
             [this, script, path, owner = runner_](const QDBusMessage &answer) {
                 const QString before6 = u"/%1"_s.arg(script);
                 if (answer.type() == QDBusMessage::ErrorMessage && owner == runner_
                     && path != before6) {
                     run(script, before6);
                 }
             });
}

/// Unloads the scripts of processes that have crashed. Their files are still there.
void KWinScript::unloadForgotten()
{
    const QStringList files = scriptFolder().entryList({scriptName(0).chopped(1) + u"*.js"_s});
    for (const QString &file : files) {
        const QString script = file.chopped(3);
        if (!QFile::exists(u"/proc/"_s + script.section(u'-', -1))) {
            call(runner_, scriptingPath, scripting, u"unloadScript"_s, {script});
            QFile::remove(fileOf(script));
        }
    }
}

QDBusPendingCall KWinScript::call(const QString &service, const QString &path,
                                  const QString &interface, const QString &method,
                                  const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return bus_->asyncCall(message, answerTimeoutMs);
}

void KWinScript::onAnswer(const QDBusPendingCall &pending,
                          const std::function<void(const QDBusMessage &)> &handle)
{
    auto *watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, handle] {
        watcher->deleteLater();
        handle(watcher->reply());
    });
}

} // namespace vellumo

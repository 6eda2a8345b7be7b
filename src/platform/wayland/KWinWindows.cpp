// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/KWinWindows.h"

#include "platform/dbus/SessionBus.h"
#include <QCoreApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr auto objectPath = "/app/vellumo/KWinWindows"_L1;

constexpr qsizetype maxTextLength = 4096;

/// Returns the script. The names before `??` are those of KWin 6. A closed window has no signals.
QString scriptFor(const QString &service)
{
    return QStringLiteral(R"(let front = null;
function report() {
    callDBus("%1", "%2", "app.vellumo.KWinWindows", "report",
             front ? String(front.internalId) : "", front ? String(front.pid) : "",
             front ? String(front.desktopFileName) : "", front ? String(front.resourceClass) : "",
             front ? String(front.caption) : "");
}
function activate(window) {
    try { front.captionChanged.disconnect(report); } catch (error) {}
    front = window;
    if (front) {
        front.captionChanged.connect(report);
    }
    report();
}
(workspace.windowActivated ?? workspace.clientActivated).connect(activate);
activate(workspace.activeWindow ?? workspace.activeClient);
)")
        .arg(service, objectPath);
}

/// Returns the title without the number that KWin adds when several windows have the same.
QString titleOf(const QString &caption)
{
    static const QRegularExpression number(u" <\\d+>\\x{200e}$"_s);
    return caption.left(maxTextLength).remove(number);
}

QString entryOf(const QString &desktopFile)
{
    const QString name = desktopFile.section(u'/', -1).left(maxTextLength);
    return name.endsWith(".desktop"_L1) ? name.chopped(8) : name;
}

} // namespace

KWinWindows::KWinWindows(SessionBus &bus, KWinScript::IsCompositor isCompositor)
    : bus_(bus)
    , script_(&scriptFor, std::move(isCompositor))
{
    connect(&script_, &KWinScript::ended, this, [this] {
        front_ = {};
        Q_EMIT changed();
    });
    if (bus_.hasOpened()) {
        follow();
    } else {
        connect(&bus_, &SessionBus::opened, this, &KWinWindows::follow);
    }
}

void KWinWindows::follow()
{
    auto bus = bus_.connection();
    if (bus && bus->registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots)) {
        script_.follow(*bus);
    }
}

void KWinWindows::report(const QString &window, const QString &process, const QString &desktopFile,
                         const QString &className, const QString &caption)
{
    if (message().service() != script_.runner()) {
        sendErrorReply(QDBusError::AccessDenied);
        return;
    }
    const qint64 identifier = process.toLongLong();
    const QString id = window.left(maxTextLength);
    const bool hasChanged = identifier > 0
        ? front_.set(id,
                     {.processIdentifier = identifier,
                      .applicationId = entryOf(desktopFile),
                      .applicationName = className.left(maxTextLength),
                      .since = {}})
        : front_.setNone();
    if (front_.isLast(id)) {
        title_ = titleOf(caption);
    }
    if (hasChanged) {
        Q_EMIT changed();
    }
}

std::optional<FrontWindow> KWinWindows::frontWindow()
{
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall); // reports that have arrived
    return front_.state();
}

std::optional<QString> KWinWindows::windowTitle(qint64 processIdentifier)
{
    const auto window = frontWindow();
    const bool isInFront =
        window && window->isActive && window->processIdentifier == processIdentifier;
    return isInFront ? std::optional(title_) : std::nullopt;
}

} // namespace vellumo

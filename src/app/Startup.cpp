// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/Startup.h"

#include "app/DesktopUndo.h"
#include "app/ModuleFile.h"
#include "app/WindowSystem.h"
#include "notes/NotesStore.h"
#include "platform/Diagnostics.h"
#include "platform/ProgramEnvironment.h"
#include "platform/dbus/ApplicationName.h"
#include "platform/dbus/BusProbe.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "platform/wayland/LayerShell.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "settings/AppConfig.h"
#include "settings/UserPreferences.h"
#include "ui/Alert.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"

#include <QApplication>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QQmlEngine>
#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

// A bus that hangs must not hold the start up for longer.
constexpr auto busTimeout = 1s;
// Another process holds the notes: it may be about to take the name on the bus, or about to end.
constexpr auto instanceTimeout = 15s;

/// Addresses may carry secrets, and every process can read another's arguments.
void hideAddresses(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        if (char *colon = std::strchr(argv[i], ':')) {
            std::memset(colon + 1, 'x', std::strlen(colon + 1));
        }
    }
}

} // namespace

Startup::Startup(int argc, char **argv)
    : lock_(QFileInfo(NotesStore::defaultStorePath()).absolutePath())
{
    QCoreApplication::setApplicationName(u"vellumo"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VELLUMO_VERSION));
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    hideAddresses(argc, argv);
    programEnvironment::preventCoreDump();
    AppConfig::takeFromEnvironment();
    const auto parsed = CommandLine::parse(arguments);
    if (const int *status = std::get_if<int>(&parsed)) {
        exitStatus_ = *status;
        return;
    }
    request_ = std::get<LaunchRequest>(parsed);
    avoidHungBus();
    if (request_.command == LaunchRequest::Command::UndoDesktopChanges) {
        const QCoreApplication application(argc, argv);
        exitStatus_ = undoDesktopChanges();
        return;
    }

    const WindowSystem windows = chooseWindowSystem(QProcessEnvironment::systemEnvironment(), [] {
        return LayerShell::isOffered(moduleFile(waylandClientFile));
    });
    remark_ = windows.remark;
    if (!windows.isUsable) {
        // Another vellumo, on a display, can still be reached.
        const QCoreApplication application(argc, argv);
        exitStatus_ = becomeTheOnlyInstance().value_or(EXIT_FAILURE);
        return;
    }
    QGuiApplication::setDesktopFileName(ApplicationName::id);
    if (!windows.platform.isEmpty()) {
        programEnvironment::setHere("QT_QPA_PLATFORM", windows.platform);
    }
    if (windows.hasLayers) {
        // Lets panels become layer surfaces. Qt reads it for each window.
        programEnvironment::setHere("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
        // Otherwise Qt loads a graphics driver, which takes memory and is not used.
        if (!qEnvironmentVariableIsSet("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION")) {
            programEnvironment::setHere("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none");
        }
    }
    QtFloatingWindows::chooseRenderer();
}

void Startup::avoidHungBus()
{
    // Another running instance shows that the bus works and only needs time.
    if (!isSessionBusResponsive(busTimeout)
        && (lock_.tryLock() || !isSessionBusResponsive(instanceTimeout))) {
        printDiagnostic(u"the session bus does not answer; going on without it"_s);
        programEnvironment::setHere("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
}

std::optional<int> Startup::becomeTheOnlyInstance()
{
    programEnvironment::restore("QT_QPA_PLATFORM"); // the application object has read it
    const RunningInstance running;
    const QDeadlineTimer deadline(instanceTimeout);
    const auto isSettled = [&] { return running.exists() || lock_.tryLock(); };
    const auto wait = [this] { return lock_.waitForLock(); };
    while (running.waitUntil(isSettled, wait, deadline)) {
        if (!running.exists()) {
            return withoutInstance();
        }
        if (request_.wantsNothing()) {
            return EXIT_SUCCESS;
        }
        if (request_.command == LaunchRequest::Command::Doctor) {
            return printReportOf(running);
        }
        switch (running.handOver(request_.forInstance())) {
        case RunningInstance::Answer::Accepted:
            return EXIT_SUCCESS;
        case RunningInstance::Answer::Refused:
            printDiagnostic(u"the vellumo that runs does not know this"_s);
            return refuse(u"Another version of vellumo is running. Quit it and start again."_s,
                          u"正在运行的是另一个版本的 vellumo，请退出后重新启动。"_s);
        case RunningInstance::Answer::None:
            printDiagnostic(u"already running, but not answering"_s);
            return refuse(u"vellumo is running but does not answer. End it and start again."_s,
                          u"vellumo 正在运行，但没有响应，请结束它后重新启动。"_s);
        case RunningInstance::Answer::Gone: // it was about to end
            break;
        }
    }
    const qint64 owner = lock_.owner();
    printDiagnostic(owner > 0 ? u"already running as process %1"_s.arg(owner)
                              : u"already running"_s);
    return refuse(u"Another vellumo is using these notes. Quit it and start again."_s,
                  u"另一个 vellumo 正在使用这些笔记，请退出后重新启动。"_s);
}

int Startup::printReportOf(const RunningInstance &running)
{
    const auto report = running.report();
    if (!report) {
        printDiagnostic(u"running, but not answering"_s);
        return EXIT_FAILURE;
    }
    printText(report->text);
    return report->canWork ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Also for a session without a display, and with a vellumo that does not end.
int Startup::undoDesktopChanges()
{
    const RunningInstance running;
    if (running.exists()) {
        (void)running.handOver({.action = u"quit"_s, .urls = {}});
        (void)running.waitUntil([this] { return lock_.tryLock(); },
                                [this] { return lock_.waitForLock(); },
                                QDeadlineTimer(instanceTimeout));
        lock_.stopWaiting();
    }
    const bool hasNoStart = undoLoginStart();
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (hasNoStart && bus.isConnected() && DesktopUndo(bus).run()) {
        return EXIT_SUCCESS;
    }
    printDiagnostic(u"not everything in the desktop's settings could be undone"_s);
    return EXIT_FAILURE;
}

int Startup::refuse(const QString &english, const QString &chinese)
{
    lock_.stopWaiting(); // the next start must not be refused because of this one
    const bool isForWindow =
        request_.command == LaunchRequest::Command::Open && !request_.isInBackground;
    if (isForWindow && qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr) {
        const SettingsDefaultsStore defaults(SettingsDefaultsStore::defaultPath());
        const BilingualText texts(
            [&] { return UserPreferences(defaults).preferredOutputLanguage(); });
        installApplicationFonts();
        QQmlEngine engine;
        prepareEngine(engine);
        Alert(engine).ask({.message = texts.pick(u"vellumo cannot start"_s, u"vellumo 无法启动"_s),
                           .informativeText = texts.pick(english, chinese),
                           .button = texts.pick(u"OK"_s, u"好"_s)});
    }
    return EXIT_FAILURE;
}

std::optional<int> Startup::withoutInstance() const
{
    switch (request_.command) {
    case LaunchRequest::Command::Quit:
        return EXIT_SUCCESS;
    case LaunchRequest::Command::Focus:
        printDiagnostic(u"not running"_s);
        return EXIT_FAILURE;
    default:
        break;
    }
    if (!remark_.isEmpty()) {
        printDiagnostic(remark_);
    }
    return std::nullopt;
}

} // namespace vellumo

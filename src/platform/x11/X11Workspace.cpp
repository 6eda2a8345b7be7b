// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Workspace.h"

#include "platform/ProgramEnvironment.h"
#include "platform/x11/DesktopSettings.h"
#include "platform/x11/X11Connection.h"
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// Delay after the start, when other work is more urgent than names of applications.
constexpr auto startDelay = 1s;

/// Opens the target with the first opener of the desktop that is installed.
bool openWithDesktop(const QString &what)
{
    const std::initializer_list<QStringList> openers{
        {u"xdg-open"_s}, {u"gio"_s, u"open"_s}, {u"x-www-browser"_s}};
    return std::any_of(openers.begin(), openers.end(), [&what](const QStringList &opener) {
        const QString program = QStandardPaths::findExecutable(opener.first());
        return !program.isEmpty()
            && programEnvironment::startProgram(program, opener.mid(1) << what);
    });
}

} // namespace

X11Workspace::X11Workspace(X11Connection &connection, X11Windows &windows, DesktopEntries entries)
    : connection_(connection)
    , windows_(windows)
    , entries_(std::move(entries))
{
    idle_.setSingleShot(true);
    connect(&idle_, &QTimer::timeout, this, [this] {
        if (entries_.refresh()) {
            resolvedClass_ = {};
        }
        resolve();
    });
    if (!connection_.isUsable()) {
        return;
    }
    constexpr uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(connection_.xcb(), connection_.root(), XCB_CW_EVENT_MASK, &mask);
    connection_.setEventHandler([this](const auto &event) { handleEvent(event); });
    look();
    announcedProcess_ = foreignProcess_; // it was in front before this program started
    idle_.start(startDelay);
}

X11Workspace::~X11Workspace()
{
    connection_.setEventHandler(nullptr);
}

void X11Workspace::handleEvent(const xcb_generic_event_t &event)
{
    switch (eventType(event)) {
    case XCB_PROPERTY_NOTIFY:
        if (isNaming(eventAs<xcb_property_notify_event_t>(event))) {
            idle_.start(0ms);
        }
        if (eventAs<xcb_property_notify_event_t>(event).atom
            != connection_.atom("_NET_ACTIVE_WINDOW"_ba)) {
            return;
        }
        break;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        if (windows_.isManaged()) {
            return;
        }
        break;
    default:
        return;
    }
    look();
    announce();
}

void X11Workspace::look()
{
    // Compare both, since the server reuses window ids for other clients.
    const auto window = windows_.activeWindow();
    const auto process = processOf(window);
    if (window == activeWindow_ && process == activeProcess_) {
        return;
    }
    activeWindow_ = window;
    activeProcess_ = process;
    isNoneActive_ = isPlaceholder(window, process);
    if (isForeign()) {
        foreignWindow_ = window;
        foreignProcess_ = activeProcess_;
        watch(window);
        resolved_.reset();
        idle_.start(0ms);
    }
    Q_EMIT activeWindowChanged();
}

void X11Workspace::refreshEntriesWhenIdle()
{
    if (!idle_.isActive()) {
        idle_.start(0ms);
    }
}

bool X11Workspace::isForeign() const
{
    return activeProcess_ && *activeProcess_ != getpid() && !isNoneActive_;
}

/// Returns whether the active window means that none is. Mutter 48 then names one of its own
/// windows.
bool X11Workspace::isPlaceholder(xcb_window_t window, std::optional<qint64> process)
{
    return process && *process != getpid() && windows_.managerProcess() == process
        && windows_.windowClass(window) == WindowClass();
}

std::optional<qint64> X11Workspace::processOf(xcb_window_t window) const
{
    const auto process = windows_.process(window);
    return process || !windows_.exists(window) ? process : std::optional<qint64>(0);
}

/// Selects changes of the window's names. Without a window manager, a change of the focus is
/// reported only by the window that loses it.
void X11Workspace::watch(xcb_window_t window)
{
    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE
        | (windows_.isManaged() ? 0U : uint32_t{XCB_EVENT_MASK_FOCUS_CHANGE});
    constexpr uint32_t nothing = 0;
    if (watchedWindow_ != XCB_WINDOW_NONE && watchedWindow_ != window && windows_.isManaged()) {
        xcb_change_window_attributes(connection_.xcb(), watchedWindow_, XCB_CW_EVENT_MASK,
                                     &nothing);
    }
    xcb_change_window_attributes(connection_.xcb(), window, XCB_CW_EVENT_MASK, &mask);
    watchedWindow_ = window;
    connection_.flush();
}

/// Returns whether the event changes the properties of the window in front that name its
/// application.
bool X11Workspace::isNaming(const xcb_property_notify_event_t &event)
{
    return event.window == foreignWindow_
        && (event.atom == XCB_ATOM_WM_CLASS
            || event.atom == connection_.atom("_GTK_APPLICATION_ID"_ba));
}

void X11Workspace::announce()
{
    if (foreignProcess_ == announcedProcess_) {
        return;
    }
    announcedProcess_ = foreignProcess_;
    if (foreignProcess_) {
        Q_EMIT didActivateApplication(*foreignProcess_);
    }
}

void X11Workspace::resolve()
{
    if (!entries_.isRead()) {
        entries_.refresh();
    }
    if (!foreignProcess_) {
        return;
    }
    const auto windowClass = windows_.windowClass(foreignWindow_);
    const QString id = windows_.gtkApplicationId(foreignWindow_);
    const bool hasGone = id.isEmpty() && windowClass == WindowClass();
    if (resolved_ && (hasGone || (windowClass == resolvedClass_ && id == resolvedId_))) {
        return;
    }
    resolvedClass_ = windowClass;
    resolvedId_ = id;
    const auto &[instance, className] = windowClass;
    const auto *entry =
        entries_.find(id, QString::fromLatin1(instance), QString::fromLatin1(className));
    RunningApplication application;
    application.processIdentifier = *foreignProcess_;
    if (entry != nullptr) {
        application.bundleIdentifier = entry->id;
        application.localizedName = entry->name;
        application.isTextEditor = entry->isTextEditor;
    } else if (!className.isEmpty()) {
        application.localizedName = QString::fromLatin1(className);
    }
    const auto before = std::exchange(resolved_, application);
    if (before && before != resolved_) {
        Q_EMIT didRenameFrontmostApplication();
    }
}

void X11Workspace::skipPastActivations()
{
    if (connection_.isUsable()) {
        look();
    }
    announcedProcess_ = foreignProcess_;
}

std::optional<RunningApplication> X11Workspace::frontmostApplication()
{
    if (connection_.isUsable()) {
        look();
    }
    if (!foreignProcess_) {
        return std::nullopt;
    }
    resolve(); // its last change may not have been delivered yet
    return resolved_;
}

bool X11Workspace::isForeignWindowActive()
{
    if (connection_.isUsable()) {
        look();
    }
    return isForeign();
}

bool X11Workspace::isActiveWindowOf(qint64 processIdentifier)
{
    if (connection_.isUsable()) {
        look();
    }
    return activeProcess_ == processIdentifier
        || windows_.namedProcess(activeWindow_) == processIdentifier;
}

bool X11Workspace::isOwnWindowActive() const
{
    const auto window = windows_.activeWindow();
    return window != XCB_WINDOW_NONE && windows_.process(window) == getpid();
}

QString X11Workspace::ownSelectedText() const
{
    const auto *focused = QGuiApplication::focusObject();
    if (focused == nullptr) {
        return {};
    }
    const auto hints = focused->property("inputMethodHints").value<Qt::InputMethodHints>();
    const bool isSecret = hints.testFlag(Qt::ImhSensitiveData);
    return isSecret ? QString() : focused->property("selectedText").toString();
}

bool X11Workspace::openUrl(const QUrl &url)
{
    const bool isWeb = url.scheme() == "https"_L1 || url.scheme() == "http"_L1;
    if (!url.isValid() || !isWeb || url.host().isEmpty()) {
        return false; // files and other schemes could start any program
    }
    return openWithDesktop(QString::fromLatin1(url.toEncoded()));
}

bool X11Workspace::openFolder(const QString &path)
{
    return QFileInfo(path).isDir() && openWithDesktop(path);
}

bool X11Workspace::openAccessibilitySettings()
{
    const auto pages = accessibilitySettings(qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    return std::any_of(pages.begin(), pages.end(), [](const SettingsPage &page) {
        const QString program = QStandardPaths::findExecutable(page.program);
        return !program.isEmpty() && programEnvironment::startProgram(program, page.arguments);
    });
}

std::optional<QString> X11Workspace::windowTitle(qint64 processIdentifier)
{
    const auto window = windows_.activeWindow();
    if (window == XCB_WINDOW_NONE || processOf(window) != processIdentifier) {
        return std::nullopt;
    }
    return windows_.title(window);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandWorkspace.h"

#include "platform/x11/X11Workspace.h"
#include "platform/xdg/StartedApplication.h"
#include <QGuiApplication>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// Longer than windows take to pass the keyboard on.
constexpr auto nextWindowTime = 150ms;

/// A window that has just been opened may have the keyboard this long before it is reported.
constexpr auto reportTime = 500ms;

} // namespace

WaylandWorkspace::WaylandWorkspace(X11Workspace &x11, FrontWindows &native)
    : x11_(x11)
    , native_(native)
{
    announcing_.setSingleShot(true);
    connect(&announcing_, &QTimer::timeout, this, &WaylandWorkspace::announce);
    connect(&x11_, &X11Workspace::activeWindowChanged, this, &WaylandWorkspace::announceSoon);
    connect(&native_, &FrontWindows::changed, this, &WaylandWorkspace::announceSoon);
    connect(&x11_, &Workspace::didRenameFrontmostApplication, this, [this] {
        if (isX11WindowInFront()) {
            Q_EMIT didRenameFrontmostApplication();
        }
    });
}

bool WaylandWorkspace::isX11WindowInFront()
{
    if (!x11_.isForeignWindowActive()) {
        return false;
    }
    const auto window = native_.frontWindow();
    const bool isReported = window && window->isOfCompositor && window->isActive;
    return !isReported || x11_.isActiveWindowOf(window->processIdentifier);
}

void WaylandWorkspace::look()
{
    if (isX11WindowInFront()) {
        front_ = x11_.frontmostApplication();
        window_.reset();
        return;
    }
    const auto window = native_.frontWindow();
    if (!window || (!window->isOfCompositor && isOwnWindowActive())) {
        if (!front_) {
            front_ = x11_.frontmostApplication();
        }
        return;
    }
    const bool isNew = !window_ || window_->since != window->since
        || window_->isActive != window->isActive
        || window_->applicationName != window->applicationName;
    if (isNew || (!wasDescribed_ && x11_.entries().isRead())) {
        window_ = window;
        wasDescribed_ = x11_.entries().isRead();
        front_ = window->isActive ? describe(*window) : RunningApplication();
    }
}

/// A window loses the keyboard before another one gets it.
void WaylandWorkspace::announceSoon()
{
    const auto window = native_.frontWindow();
    const bool isBetween = !isX11WindowInFront() && (!window || !window->isActive);
    announcing_.start(isBetween ? nextWindowTime : 0ms);
    x11_.refreshEntriesWhenIdle();
}

RunningApplication WaylandWorkspace::describe(const FrontWindow &window) const
{
    RunningApplication application;
    application.processIdentifier = window.processIdentifier;
    const DesktopEntry *entry = x11_.entries().find(window.applicationId, {}, {});
    const QString program = programName(window.processIdentifier);
    if (entry == nullptr) {
        entry = x11_.entries().find(startedApplicationId(window.processIdentifier),
                                    window.applicationName, program);
    }
    if (entry != nullptr) {
        application.bundleIdentifier = entry->id;
        application.localizedName = entry->name;
        application.isTextEditor = entry->isTextEditor;
    } else if (!window.applicationName.isEmpty()) {
        application.localizedName = window.applicationName;
    } else if (!program.isEmpty()) {
        application.localizedName = program; // until it reports its name
    }
    return application;
}

void WaylandWorkspace::announce()
{
    look();
    const auto process = front_ ? std::optional<qint64>(front_->processIdentifier) : std::nullopt;
    if (process == announcedProcess_) {
        return;
    }
    announcedProcess_ = process;
    if (isReportedLate()) {
        wasUnknown_ = false;
        Q_EMIT didRenameFrontmostApplication();
    } else if (process) {
        Q_EMIT didActivateApplication(*process);
    }
}

/// Returns whether the window in front was there at the last skipPastActivations(), although no
/// window had been reported then.
bool WaylandWorkspace::isReportedLate() const
{
    return wasUnknown_ && window_ && window_->isActive && window_->since < skippedAt_ + reportTime;
}

std::optional<RunningApplication> WaylandWorkspace::frontmostApplication()
{
    look();
    return front_;
}

void WaylandWorkspace::skipPastActivations()
{
    x11_.skipPastActivations();
    look();
    announcedProcess_ = front_ ? std::optional<qint64>(front_->processIdentifier) : std::nullopt;
    wasUnknown_ = front_ == RunningApplication();
    skippedAt_ = std::chrono::steady_clock::now();
}

bool WaylandWorkspace::isScreenCovered()
{
    return x11_.isScreenCovered();
}

bool WaylandWorkspace::isOwnWindowActive() const
{
    if (QGuiApplication::platformName() == "wayland"_L1) {
        return QGuiApplication::focusWindow() != nullptr; // sway does not report layer surfaces
    }
    const auto window = native_.frontWindow();
    return window && window->isOfCompositor ? window->isBehindOwn : x11_.isOwnWindowActive();
}

QString WaylandWorkspace::ownSelectedText() const
{
    return x11_.ownSelectedText();
}

bool WaylandWorkspace::openUrl(const QUrl &url)
{
    return x11_.openUrl(url);
}

bool WaylandWorkspace::openFolder(const QString &path)
{
    return x11_.openFolder(path);
}

bool WaylandWorkspace::openAccessibilitySettings()
{
    return x11_.openAccessibilitySettings();
}

std::optional<QString> WaylandWorkspace::windowTitle(qint64 processIdentifier)
{
    if (isX11WindowInFront()) {
        return x11_.windowTitle(processIdentifier);
    }
    return native_.windowTitle(processIdentifier);
}

} // namespace vellumo

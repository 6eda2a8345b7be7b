// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/LinuxPlatform.h"

#include "app/ModuleFile.h"
#include "app/WindowSystem.h"
#include "platform/xdg/AutostartEntry.h"
#include "settings/SettingsKeys.h"

#include <QGuiApplication>
#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Returns the command line, quoted as in a shell.
QString explainCommand()
{
    QString program = AutostartEntry::ownProgram();
    program.replace(u'\'', u"'\\''"_s);
    return u'\'' + program + u"' --explain"_s;
}

} // namespace

LinuxPlatform::LinuxPlatform(DefaultsStore &defaults, ConsentPrompting &consent)
    : accessibility_({.session = sessionBus_,
                      .defaults = defaults,
                      .settings = {.consent = settings::accessibilityConsent.name.toString(),
                                   .leftOff = settings::accessibilityLeftOff.name.toString()},
                      .prompting = consent,
                      .windowTitle = [this](qint64 pid) { return windowTitle(pid); }})
    , wayland_(isWaylandSession(QProcessEnvironment::systemEnvironment()) ? WaylandSession::make(
                   x11_, sessionBus_, accessibility_.bus(), moduleFile(waylandClientFile))
                                                                          : nullptr)
    , secrets_(sessionBus_, moduleFile(u"secretcipher.so"_s))
    , pasting_(wayland_ ? wayland_->clipboardText() : clipboardText_)
{
    screenLock_.followLogins();
    if (sessionBus_.connection()) {
        followSession();
    } else {
        QObject::connect(&sessionBus_, &SessionBus::opened, &appearance_,
                         [this] { followSession(); });
    }
}

EventMonitoring &LinuxPlatform::events()
{
    return wayland_ ? wayland_->events() : x11_.eventMonitoring();
}

Workspace &LinuxPlatform::workspace()
{
    return wayland_ ? wayland_->workspace() : x11_.workspace();
}

PrimarySelection &LinuxPlatform::primarySelection()
{
    return wayland_ ? wayland_->primarySelection() : x11_.primarySelection();
}

Pasteboard &LinuxPlatform::pasteboard()
{
    return wayland_ ? wayland_->pasteboard() : x11_.pasteboard();
}

KeyPosting &LinuxPlatform::keys()
{
    return wayland_ ? wayland_->keyPosting() : x11_.keyPosting();
}

SessionRoads LinuxPlatform::roads()
{
    SessionRoads roads = wayland_ ? wayland_->roads() : SessionRoads();
    if (wayland_) {
        using Windows = SessionRoads::Windows;
        roads.windows =
            QGuiApplication::platformName() == "wayland"_L1 ? Windows::Layers : Windows::XWayland;
    }
    return roads;
}

std::optional<QString> LinuxPlatform::windowTitle(qint64 processIdentifier)
{
    return wayland_ ? wayland_->windowTitle(processIdentifier)
                    : x11_.workspace().windowTitle(processIdentifier);
}

void LinuxPlatform::followSession()
{
    if (const auto bus = sessionBus_.connection()) {
        appearance_.follow(*bus);
        screenLock_.followSession(*bus);
        if (wayland_) {
            reach_ = std::make_unique<DesktopReach>(*bus, explainCommand());
            reach_->replaceOutdated();
            wayland_->addTaps(reach_->taps());
            QObject::connect(reach_.get(), &DesktopReach::explainRequested, reach_.get(),
                             [this] { onShortcut(); });
        }
    }
}

} // namespace vellumo

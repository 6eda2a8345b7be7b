// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/DesktopReport.h"

#include "app/LinuxPlatform.h"
#include "app/WindowSystem.h"
#include "capture/BrowserContextResolver.h"
#include "platform/dbus/TrayHosts.h"
#include "platform/xdg/DesktopEntries.h"

#include <QFile>
#include <QProcessEnvironment>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// What the keyring is asked for to learn how it is; there never is such an item.
const QString noItem = u"nothing"_s;

/// Browsers of the other families look only at their start whether accessibility is on.
bool followsAccessibility(const QString &id)
{
    constexpr std::array families{"firefox"_L1, "mozilla"_L1, "epiphany"_L1};
    return std::ranges::any_of(families, [&id](QLatin1StringView family) {
        return id.contains(family, Qt::CaseInsensitive);
    });
}

} // namespace

DesktopReport::DesktopReport(const Collaborators &with)
    : with_(with)
    , isWayland_(isWaylandSession(QProcessEnvironment::systemEnvironment()))
{
    connect(&with_.tray, &TrayHosts::changed, this, &DesktopReport::changed);
    connect(&with_.compositor, &CompositorWatch::changed, this, &DesktopReport::changed);
    connect(&with_.platform.secrets(), &SecretItems::becameReadable, this,
            &DesktopReport::askKeyring);
    connect(&with_.platform.sessionBus(), &SessionBus::opened, this, &DesktopReport::changed);
    connect(&with_.platform.accessibility(), &Accessibility::trustChanged, this,
            &DesktopReport::changed);
    connect(&with_.platform.accessibility(), &Accessibility::connectionChanged, this,
            &DesktopReport::changed);
    if (const auto *wayland = with_.platform.waylandSession()) {
        connect(wayland, &WaylandSession::reachChanged, this, &DesktopReport::changed);
    }
}

bool DesktopReport::hearsEveryTap() const
{
    const DesktopChange *const setting = tapSetting();
    return with_.platform.hearsEveryTap()
        || (setting != nullptr && setting->state() == DesktopChange::State::Made);
}

DesktopChange *DesktopReport::tapSetting() const
{
    DesktopReach *const reach = with_.platform.reach();
    return reach != nullptr ? &reach->tapSetting() : nullptr;
}

DesktopChange *DesktopReport::extension() const
{
    DesktopReach *const reach = with_.platform.reach();
    return reach != nullptr ? &reach->extension() : nullptr;
}

DesktopChange *DesktopReport::shortcut() const
{
    DesktopReach *const reach = with_.platform.reach();
    return reach != nullptr ? &reach->shortcut() : nullptr;
}

SessionRoads DesktopReport::roads() const
{
    return with_.platform.roads();
}

bool DesktopReport::hasTray() const
{
    return with_.tray.isPresent();
}

bool DesktopReport::hasCompositor() const
{
    return with_.compositor.isCompositing();
}

bool DesktopReport::isConnected() const
{
    return with_.platform.accessibility().isConnected();
}

bool DesktopReport::isConnecting() const
{
    return with_.platform.accessibility().isConnecting();
}

void DesktopReport::refresh()
{
    askKeyring();
    lookForBrowsers();
    Q_EMIT changed();
}

void DesktopReport::askKeyring()
{
    with_.platform.secrets().get(noItem, this, [this](const SecretAnswer &answer) {
        using Kind = SecretAnswer::Kind;
        keyring_ = answer.kind == Kind::Locked ? Keyring::Locked
            : answer.kind == Kind::Unavailable ? Keyring::Absent
                                               : Keyring::Open;
        Q_EMIT changed();
    });
}

void DesktopReport::lookForBrowsers()
{
    browsers_.clear();
    browsersDecidingAtStart_.clear();
    const QStringList folders = DesktopEntries::standardFolders();
    const QStringList languages = desktopEntryLanguages();
    const QStringList ids = BrowserContextResolver::knownBrowsers();
    for (const QString &id : ids) {
        for (const QString &folder : folders) {
            QFile file(folder + u'/' + id + u".desktop"_s);
            if (!file.open(QIODevice::ReadOnly)) {
                continue;
            }
            const auto entry = parseDesktopEntry(file.readAll(), languages);
            QStringList &list = followsAccessibility(id) ? browsers_ : browsersDecidingAtStart_;
            if (entry && !entry->isDeleted && !list.contains(entry->name)) {
                list.append(entry->name);
            }
            break; // it overrides those of later folders
        }
    }
}

} // namespace vellumo

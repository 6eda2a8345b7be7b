// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/DesktopUndo.h"

#include "platform/xdg/AutostartEntry.h"

#include <QCoreApplication>
#include <QTimer>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto deadline = 10s;

} // namespace

DesktopUndo::DesktopUndo(const QDBusConnection &bus) : reach_(bus, {}), pending_(reach_.changes())
{
    for (DesktopChange *change : reach_.changes()) {
        QObject::connect(change, &DesktopChange::changed, &reach_,
                         [this, change] { look(change); });
        QObject::connect(change, &DesktopChange::finished, &reach_,
                         [this, change](bool isUndone) { end(change, isUndone); });
    }
}

bool DesktopUndo::run()
{
    QTimer::singleShot(deadline, &reach_, &QCoreApplication::quit);
    QCoreApplication::exec();
    return pending_.isEmpty() && !hasFailed_;
}

void DesktopUndo::look(DesktopChange *change)
{
    if (undone_.contains(change) || change->state() == DesktopChange::State::Unknown) {
        return;
    }
    if (change->state() == DesktopChange::State::Made) {
        undone_.append(change);
        change->undo();
    } else {
        end(change, true);
    }
}

void DesktopUndo::end(DesktopChange *change, bool isUndone)
{
    hasFailed_ = hasFailed_ || !isUndone;
    pending_.removeAll(change);
    if (pending_.isEmpty()) {
        QCoreApplication::quit();
    }
}

bool undoLoginStart()
{
    AutostartEntry entry(AutostartEntry::standardFolders(), AutostartEntry::ownProgram());
    using State = LoginStart::State;
    const bool isOn = entry.state() == State::On || entry.state() == State::Broken;
    return !isOn || entry.setOn(false);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandKeyPosting.h"

#include "platform/FrontWindows.h"
#include "platform/wayland/client/CopyKeys.h"
#include "platform/x11/TerminalClasses.h"
#include "platform/x11/X11Workspace.h"
#include "platform/xdg/StartedApplication.h"
#include <algorithm>
#include <unistd.h>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// A compositor processes the keys within milliseconds.
constexpr auto postingTime = 100ms;

/// The application id of a native window corresponds to the class of an X11 window.
bool isMishandlingCopyKeys(const FrontWindow &window)
{
    const QString names[] = {window.applicationId, window.applicationName,
                             startedApplicationId(window.processIdentifier),
                             programName(window.processIdentifier)};
    return std::ranges::any_of(
        names, [](const QString &name) { return mishandlesCopyKeys(name.toUtf8()); });
}

} // namespace

WaylandKeyPosting::WaylandKeyPosting(KeyPosting &x11Posting, X11Workspace &x11,
                                     FrontWindows &native, CopyKeys *keys)
    : x11Posting_(x11Posting)
    , x11_(x11)
    , native_(native)
    , keys_(keys)
{
}

bool WaylandKeyPosting::canPostCopy(qint64 process)
{
    if (x11_.isForeignWindowActive()) {
        return x11Posting_.canPostCopy(process);
    }
    const auto window = native_.frontWindow();
    return keys_ != nullptr && keys_->areAvailable() && !x11_.isOwnWindowActive() && window
        && window->isActive && window->processIdentifier == process && process > 0
        && process != getpid() && !isMishandlingCopyKeys(*window);
}

bool WaylandKeyPosting::postCopy(qint64 process)
{
    if (!canPostCopy(process)) {
        return false;
    }
    return x11_.isForeignWindowActive() ? x11Posting_.postCopy(process)
                                        : keys_->send(QDeadlineTimer(postingTime));
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandSession.h"
#include "platform/wayland/WaylandEventMonitors.h"

#include "platform/atspi/ActiveFrames.h"
#include "platform/atspi/AltKeys.h"
#include "platform/wayland/BridgedPrimarySelection.h"
#include "platform/wayland/WaylandWorkspace.h"
#include "platform/x11/X11Backend.h"

namespace vellumo {

namespace {

class Session : public WaylandSession {
public:
    Session(X11Backend &x11, AtspiBus &bus)
        : x11_(x11)
        , frames_(bus, [this](qint64 process) { return process == compositor(); })
        , workspace_(x11.workspace(), frames_)
        , altKeys_(bus)
        , events_(x11.eventMonitoring())
        , primarySelection_(x11.primarySelection(), frames_, [this] { return compositor(); })
    {
        events_.add(altKeys_);
    }

    EventMonitoring &events() override { return events_; }
    Workspace &workspace() override { return workspace_; }
    PrimarySelection &primarySelection() override { return primarySelection_; }
    std::optional<QString> windowTitle(qint64 processIdentifier) override
    {
        return workspace_.windowTitle(processIdentifier);
    }

private:
    /// The compositor is the window manager of XWayland.
    [[nodiscard]] std::optional<qint64> compositor() { return x11_.windows().managerProcess(); }

    X11Backend &x11_;
    ActiveFrames frames_;
    WaylandWorkspace workspace_;
    AltKeys altKeys_;
    WaylandEventMonitors events_;
    BridgedPrimarySelection primarySelection_;
};

} // namespace

std::unique_ptr<WaylandSession> WaylandSession::make(X11Backend &x11, AtspiBus &bus)
{
    return std::make_unique<Session>(x11, bus);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/WaylandSession.h"
#include "platform/wayland/WaylandEventMonitors.h"

#include "platform/atspi/ActiveFrames.h"
#include "platform/atspi/AltKeys.h"
#include "platform/wayland/BridgedPrimarySelection.h"
#include "platform/wayland/WaylandWorkspace.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include "platform/x11/X11Backend.h"
#include <QLibrary>

namespace vellumo {

namespace {

std::unique_ptr<PrimarySelection> makePrimarySelection(const QString &clientModule)
{
    const auto make = reinterpret_cast<waylandClientModule::MakePrimarySelection>(
        QLibrary::resolve(clientModule, waylandClientModule::makePrimarySelection));
    return std::unique_ptr<PrimarySelection>(make != nullptr ? make() : nullptr);
}

class Session : public WaylandSession {
public:
    Session(X11Backend &x11, AtspiBus &bus, const QString &clientModule)
        : x11_(x11)
        , frames_(bus, [this](qint64 process) { return process == compositor(); })
        , workspace_(x11.workspace(), frames_)
        , altKeys_(bus)
        , events_(x11.eventMonitoring())
        , managed_(makePrimarySelection(clientModule))
        , primarySelection_(x11.primarySelection(), managed_.get(), frames_,
                            [this] { return compositor(); })
    {
        events_.add(altKeys_);
    }

    EventMonitoring &events() override { return events_; }
    Workspace &workspace() override { return workspace_; }
    PrimarySelection &primarySelection() override { return primarySelection_; }
    void addTaps(TapSource &source) override { events_.add(source); }
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
    std::unique_ptr<PrimarySelection> managed_; ///< null where the compositor has no such protocol
    BridgedPrimarySelection primarySelection_;
};

} // namespace

std::unique_ptr<WaylandSession> WaylandSession::make(X11Backend &x11, AtspiBus &bus,
                                                     const QString &clientModule)
{
    return std::make_unique<Session>(x11, bus, clientModule);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopReport.h"
#include "app/SessionReport.h"
#include "computer/ComputerModel.h"
#include "platform/xdg/AutostartEntry.h"
#include <memory>

namespace vellumo {

class Clock;
class DefaultsStore;
class PermissionManager;

/// Connects the page "This computer" with the rest of the program. Its parts are created when it is
/// first shown.
class ComputerWiring {
public:
    /// All must outlive this object.
    struct Collaborators {
        DesktopReport::Collaborators desktop;
        PermissionManager &permission;
        ServiceSetup &service;
        const ForwardingExplainer &explainer;
        Clock &clock;
        const BilingualText &texts;
        DefaultsStore &defaults;
    };

    explicit ComputerWiring(const Collaborators &with) : with_(with) { }

    /// The model must not outlive this object.
    [[nodiscard]] std::unique_ptr<ComputerModel> makeModel();

    /// Returns the start at login, which lives as long as this object.
    [[nodiscard]] LoginStart &login();

    /// Returns what asks for changes to the desktop, which must not outlive this object; null in an
    /// X11 session, where none is needed.
    [[nodiscard]] std::unique_ptr<TapReach> makeTaps();

    /// Returns what reports on this session, which must not outlive this object.
    [[nodiscard]] std::unique_ptr<SessionReport> makeReport();

private:
    [[nodiscard]] DesktopReport &desktop();

    Collaborators with_;
    std::unique_ptr<DesktopReport> desktop_;
    std::unique_ptr<AutostartEntry> login_;
};

} // namespace vellumo

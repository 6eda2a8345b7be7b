// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/ComputerWiring.h"

#include "app/LinuxPlatform.h"
#include "app/PermissionManager.h"
#include "app/WindowSystem.h"

#include <QProcessEnvironment>

namespace vellumo {

DesktopReport &ComputerWiring::desktop()
{
    if (!desktop_) {
        desktop_ = std::make_unique<DesktopReport>(with_.desktop);
    }
    return *desktop_;
}

std::unique_ptr<TapReach> ComputerWiring::makeTaps()
{
    return isWaylandSession(QProcessEnvironment::systemEnvironment())
        ? std::make_unique<TapReach>(desktop(), with_.texts, with_.defaults)
        : nullptr;
}

std::unique_ptr<SessionReport> ComputerWiring::makeReport()
{
    return std::make_unique<SessionReport>(
        SessionReport::Collaborators{.platform = with_.desktop.platform,
                                     .desktop = desktop(),
                                     .service = with_.service,
                                     .explainer = with_.explainer,
                                     .defaults = with_.defaults,
                                     .clock = with_.clock});
}

LoginStart &ComputerWiring::login()
{
    if (!login_) {
        login_ = std::make_unique<AutostartEntry>(AutostartEntry::standardFolders(),
                                                  AutostartEntry::ownProgram());
    }
    return *login_;
}

std::unique_ptr<ComputerModel> ComputerWiring::makeModel()
{
    Accessibility &accessibility = with_.desktop.platform.accessibility();
    auto model =
        std::make_unique<ComputerModel>(ComputerModel::Collaborators{.accessibility = accessibility,
                                                                     .service = with_.service,
                                                                     .explainer = with_.explainer,
                                                                     .desktop = desktop(),
                                                                     .login = login(),
                                                                     .clock = with_.clock,
                                                                     .texts = with_.texts,
                                                                     .defaults = with_.defaults});
    model->onWithdrawConsent = [&permission = with_.permission, &accessibility] {
        permission.setTrusted(false); // no alert about what the user has just done
        accessibility.withdrawConsent();
    };
    return model;
}

} // namespace vellumo

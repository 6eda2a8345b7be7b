// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/ComputerWiring.h"

#include "app/LinuxPlatform.h"
#include "app/PermissionManager.h"

namespace vellumo {

std::unique_ptr<ComputerModel> ComputerWiring::makeModel()
{
    if (!desktop_) {
        desktop_ = std::make_unique<DesktopReport>(with_.desktop);
        login_ = std::make_unique<AutostartEntry>(AutostartEntry::standardFolders(),
                                                  AutostartEntry::ownProgram());
    }
    Accessibility &accessibility = with_.desktop.platform.accessibility();
    auto model =
        std::make_unique<ComputerModel>(ComputerModel::Collaborators{.accessibility = accessibility,
                                                                     .service = with_.service,
                                                                     .explainer = with_.explainer,
                                                                     .desktop = *desktop_,
                                                                     .login = *login_,
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

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/PermissionWiring.h"

#include "app/PermissionManager.h"
#include "capture/TriggerManager.h"
#include "panel/ResultPanelController.h"
#include "platform/Accessibility.h"
#include "ui/ConsentDialog.h"

namespace vellumo {

PermissionWiring::PermissionWiring(const Collaborators &with)
    : with_(with)
    , alert_(with.engine, with.texts)
{
    with_.manager.onChange = [this](bool isTrusted) { isTrusted ? granted() : revoked(); };
    connect(&alert_, &RevokedAlert::closed, this, [this](bool opensSettings) {
        if (opensSettings) {
            with_.manager.openAccessibilitySettings();
        }
        with_.consent.release(!with_.accessibility.isProcessTrusted());
    });
    connect(&with_.resultPanel, &ResultPanelController::accessibilityRequested, this,
            [this] { with_.accessibility.isProcessTrustedWithPrompt(); });
}

void PermissionWiring::granted()
{
    with_.trigger.start();
    alert_.close();
    with_.consent.release(false);
}

void PermissionWiring::revoked()
{
    // The question follows when the alert is closed: only one of the two is shown at a time.
    with_.consent.hold();
    with_.accessibility.isProcessTrustedWithPrompt();
    with_.manager.setTrusted(with_.accessibility.isProcessTrusted());
    alert_.show();
}

} // namespace vellumo

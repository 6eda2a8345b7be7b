// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/MainWindowWiring.h"

#include "account/AuthService.h"
#include "app/SignInPreview.h"

namespace vellumo {

MainWindowWiring::MainWindowWiring(const Collaborators &with)
    : auth_(with.window.auth)
    , host_({with.engine, with.workspace, with.coordinator, with.resultPanel, with.window.texts})
    , controller_(with.engine, with.window, host_)
    , uploadQuestion_({.engine = with.engine,
                       .ownership = with.ownership,
                       .sync = *with.window.sync,
                       .auth = with.window.auth,
                       .texts = with.window.texts})
    , guard_(activation_, with.panels, with.screens, controller_)
    , with_(with)
{
    controller_.onShown = [this] { uploadQuestion_.update(); };
    uploadQuestion_.window = [this]() -> QWindow * {
        QWindow *const window = controller_.window();
        return window != nullptr && window->isVisible() ? window : nullptr;
    };
    host_.window = [this]() -> QWindow * { return controller_.window(); };
}

MainWindowWiring::~MainWindowWiring() = default;

void MainWindowWiring::show()
{
    auth_.whenRestored(this, [this] { controller_.show(); });
}

void MainWindowWiring::showAtLaunch()
{
    auth_.whenRestored(this, [this] {
        isWanted_ = true;
        showWhenReady();
    });
}

void MainWindowWiring::launchIsDone()
{
    isLaunchDone_ = true;
    showWhenReady();
}

void MainWindowWiring::showWhenReady()
{
    if (isLaunchDone_ && isWanted_) {
        isWanted_ = false;
        controller_.show();
    }
}

void MainWindowWiring::writeSignInSnapshots(const QString &folder, std::function<void()> done)
{
    preview_ = std::make_unique<SignInPreview>(with_.engine, auth_);
    preview_->writeSnapshots(folder, std::move(done));
}

} // namespace vellumo

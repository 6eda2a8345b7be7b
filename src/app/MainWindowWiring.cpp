// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/MainWindowWiring.h"

#include "account/AuthService.h"
#include "app/SignInPreview.h"
#include "capture/VellumoCoordinator.h"
#include "panel/ResultPanelController.h"
#include "platform/Workspace.h"
#include "platform/windowing/x11/X11Hints.h"

#include <QClipboard>
#include <QGuiApplication>

namespace vellumo {

MainWindowWiring::MainWindowWiring(const Collaborators &with)
    : auth_(with.window.auth)
    , saving_(with.window.texts)
    , controller_(with.engine, with.window)
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
    controller_.onActivate = [](const QWindow &window) { x11::activate(window.winId()); };
    controller_.onOpenPage = [&workspace = with.workspace](const QUrl &page) {
        return workspace.openUrl(page);
    };
    controller_.onChooseFile = [this](const NotesExporter::FileQuestion &question) {
        saving_.ask(controller_.window(), question);
    };
    controller_.onForgetFile = [this] { saving_.withdraw(); };
    controller_.onOpenFolder = [&workspace = with.workspace](const QString &folder) {
        return workspace.openFolder(folder);
    };
    controller_.onCopy = [](const QString &text) { QGuiApplication::clipboard()->setText(text); };
    controller_.onAskFurther = [&coordinator = with.coordinator,
                                &panel = with.resultPanel](const QUuid &id) {
        coordinator.reopenNote(id);
        panel.focusPanel();
    };
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
    preview_ = std::make_unique<SignInPreview>(with_.engine, with_.window);
    preview_->writeSnapshots(folder, std::move(done));
}

} // namespace vellumo

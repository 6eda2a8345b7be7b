// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/ActivationGuard.h"
#include "app/PageHost.h"
#include "app/UploadQuestion.h"
#include "mainwindow/MainWindowController.h"
#include "platform/ApplicationActivation.h"

namespace vellumo {

class ResultPanelController;
class SignInPreview;
class VellumoCoordinator;
class Workspace;

/// The main window among the rest of the program.
class MainWindowWiring : public QObject {
    Q_OBJECT

public:
    /// All must outlive this object.
    struct Collaborators {
        QQmlEngine &engine;
        MainWindowModel::Collaborators window; ///< with sync
        NotesOwnership &ownership;
        Workspace &workspace;
        const FloatingWindows &panels;
        const Screens &screens;
        ResultPanelController &resultPanel;
        VellumoCoordinator &coordinator;
    };

    explicit MainWindowWiring(const Collaborators &with);
    ~MainWindowWiring() override;
    Q_DISABLE_COPY_MOVE(MainWindowWiring)

    /// What another start of the program, its icon and its place in the tray do.
    /// Waits a moment for the keyring at a start, so that a signed-in user meets no sign-in view.
    void show();
    /// Leads to where a service is entered.
    void showService() { controller_.showService(); }

    /// See MainWindowController.
    [[nodiscard]] std::optional<ReadingContext> openNoteContext() const
    {
        return controller_.openNoteContext();
    }

    /// Shows it once the launch is done and it is known who is signed in.
    void showAtLaunch();
    /// What comes first at a launch is on screen.
    void launchIsDone();

    /// For developers: writes pictures of the sign-in view into the folder, then calls `done`.
    void writeSignInSnapshots(const QString &folder, std::function<void()> done);

private:
    void showWhenReady();

    AuthService &auth_;
    PageHost host_;
    MainWindowController controller_;
    UploadQuestion uploadQuestion_;
    ApplicationActivation activation_; ///< silent: only the clicked window is raised here
    ActivationGuard guard_;
    bool isWanted_ = false;
    bool isLaunchDone_ = false;
    Collaborators with_;
    std::unique_ptr<SignInPreview> preview_; ///< only when a developer asks for it
};

} // namespace vellumo

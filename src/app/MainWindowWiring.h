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

/// Connects the main window with the rest of the program.
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

    /// Shows the window for another start of the program, its desktop icon and its tray icon. Waits
    /// up to half a second for the keyring, so that a signed-in user does not see the sign-in view.
    void show();
    /// Opens the section where a service is entered.
    void showService() { controller_.showService(); }
    /// Opens a note of the store.
    void showNote(const QUuid &id) { controller_.showNote(id); }

    /// See MainWindowController.
    [[nodiscard]] std::optional<ReadingContext> openNoteContext() const
    {
        return controller_.openNoteContext();
    }

    /// Shows the window once the launch is done and the session has been restored.
    void showAtLaunch();
    /// Reports that the pill is on screen.
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

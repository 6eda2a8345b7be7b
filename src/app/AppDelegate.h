// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <memory>

class QApplication;

namespace vellumo {

class AccountWiring;
class AIExplaining;
class ApplicationInterface;
class CaptureWiring;
class ComputerWiring;
struct Foundation;
class ForwardingExplainer;
class MainWindowWiring;
class MenuWiring;
class NotesStore;
class OnboardingWiring;
class PermissionManager;
class PermissionWiring;
class Preview;
class ServiceSetup;
class SyncWiring;
struct LaunchRequest;

/// Builds every long-lived object once, wires them, and owns them until the process ends.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(QApplication &application);
    ~AppDelegate() override;
    Q_DISABLE_COPY_MOVE(AppDelegate)

    /// Launches and runs until the program ends; returns its exit status.
    [[nodiscard]] int run(LaunchRequest request);

private:
    void applicationDidFinishLaunching();
    void createMenus();
    void startPermissionManager();
    /// Shows that the file of notes cannot be used, until the window is closed.
    void sayUnusable(const QString &file);
    void createAccount();
    [[nodiscard]] std::unique_ptr<AIExplaining> makeAIService();
    void buildCapturePipeline();
    void wireSync();
    void wireExplainer();
    void wirePermission();
    void createMainWindow();
    void prepareOnboarding();
    void finishLaunchingWhenIdle();

    /// For developers: sample windows, and pictures of them, when the environment asks.
    void showPreviewHUD();
    void followSessionBus();
    void configureApplicationInterface();
    void perform(const LaunchRequest &request);
    void applicationShouldHandleReopen();
    /// Takes the addresses with the program's own scheme, exactly as they were written. They are
    /// the caller's claim: any process on the session bus can send one.
    void applicationOpen(const QStringList &urls);
    void terminate();

    // In the order in which they are built; each may use those above it.
    QApplication &application_;
    std::unique_ptr<Foundation> foundation_;
    std::unique_ptr<MenuWiring> menus_;
    std::unique_ptr<PermissionManager> permissionManager_;
    std::unique_ptr<NotesStore> notesStore_;
    std::unique_ptr<AccountWiring> account_;
    std::unique_ptr<ServiceSetup> serviceSetup_;
    std::unique_ptr<ForwardingExplainer> aiService_;
    std::unique_ptr<CaptureWiring> capture_;
    std::unique_ptr<SyncWiring> sync_;
    std::unique_ptr<PermissionWiring> permission_;
    std::unique_ptr<ComputerWiring> computer_;
    std::unique_ptr<MainWindowWiring> mainWindow_;
    std::unique_ptr<OnboardingWiring> onboarding_;
    std::unique_ptr<ApplicationInterface> applicationInterface_;
    std::unique_ptr<Preview> preview_; ///< only when a developer asks for it
    bool isInBackground_ = false; ///< started so
    bool asksWhenOpened_ = false; ///< for permission, which a start in the background did not
};

} // namespace vellumo

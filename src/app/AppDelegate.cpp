// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"

#include "app/AccountWiring.h"
#include "app/CaptureWiring.h"
#include "app/CommandLine.h"
#include "app/ComputerWiring.h"
#include "app/Foundation.h"
#include "app/MainWindowWiring.h"
#include "app/MenuWiring.h"
#include "app/OnboardingWiring.h"
#include "app/PermissionManager.h"
#include "app/PermissionWiring.h"
#include "app/Preview.h"
#include "app/SyncWiring.h"
#include "app/TerminationSignals.h"
#include "explain/ForwardingExplainer.h"
#include "explain/ServiceSetup.h"
#include "notes/NotesStore.h"
#include "platform/Diagnostics.h"
#include "platform/Wiping.h"
#include "platform/dbus/ApplicationInterface.h"
#include "ui/Alert.h"
#include "ui/ApplicationFonts.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

AppDelegate::AppDelegate(QApplication &application) : application_(application) { }

AppDelegate::~AppDelegate() = default;

int AppDelegate::run(LaunchRequest request)
{
    const TerminationSignals termination;
    connect(&termination, &TerminationSignals::received, this, &AppDelegate::terminate);
    QApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();

    isInBackground_ = request.isInBackground;
    applicationDidFinishLaunching();
    // once everything listens
    QMetaObject::invokeMethod(
        this,
        [this, request = std::move(request)]() mutable {
            perform(request);
            for (QString &url : request.urls) {
                wipe(url);
            }
        },
        Qt::QueuedConnection);
    const int status = QApplication::exec();
    // What is on screen becomes a note, as whenever the panel closes.
    capture_->panel().dismiss();
    return status;
}

void AppDelegate::terminate()
{
    if (applicationInterface_) {
        applicationInterface_->stop();
    }
    // Not quit(), which first closes windows: an open question would count as answered.
    QApplication::exit();
}

void AppDelegate::applicationDidFinishLaunching()
{
    foundation_ = std::make_unique<Foundation>();
    createMenus();
    startPermissionManager();
    notesStore_ = std::make_unique<NotesStore>(NotesStore::defaultStorePath(),
                                               [this](const QString &file) { sayUnusable(file); });
    createAccount();
    aiService_ = std::make_unique<ForwardingExplainer>(makeAIService(), foundation_->clock);
    buildCapturePipeline();
    wireSync();
    wireExplainer();
    wirePermission();
    createMainWindow();
    prepareOnboarding();
    capture_->coordinator().start();
    configureApplicationInterface();
    showPreviewHUD();
    finishLaunchingWhenIdle();
    printDiagnostic(u"ready — select text and double-tap Option (Alt)"_s);
}

void AppDelegate::createMenus()
{
    menus_ = std::make_unique<MenuWiring>(*foundation_);
    connect(menus_.get(), &MenuWiring::openRequested, this,
            &AppDelegate::applicationShouldHandleReopen);
    connect(menus_.get(), &MenuWiring::quitRequested, this, &AppDelegate::terminate);
}

void AppDelegate::configureApplicationInterface()
{
    applicationInterface_ = std::make_unique<ApplicationInterface>();
    connect(applicationInterface_.get(), &ApplicationInterface::activationRequested, this,
            &AppDelegate::applicationShouldHandleReopen);
    connect(applicationInterface_.get(), &ApplicationInterface::openRequested, this,
            &AppDelegate::applicationOpen);
    const auto explain = [this] { capture_->coordinator().handleTrigger(); };
    foundation_->platform.onShortcut = explain;
    applicationInterface_->actions = {
        {u"explain"_s, explain},
        {u"notes"_s, [this] { capture_->coordinator().showNotesSummary(); }},
        {u"focus"_s, [this] { capture_->panel().focusPanel(); }},
        {u"quit"_s, [this] { terminate(); }},
    };
    applicationInterface_->writeReport =
        [this](const ApplicationInterface::ReportCompletion &done) {
            SessionReport *const report = computer_->makeReport().release();
            report->setParent(applicationInterface_.get());
            report->write([report, done](const QString &text, bool canWork) {
                report->deleteLater();
                done(text, canWork);
            });
        };
    connect(applicationInterface_.get(), &ApplicationInterface::nameTaken, this, [this] {
        printDiagnostic(u"another vellumo has just taken the name on the session bus"_s);
        terminate();
    });
}

void AppDelegate::showPreviewHUD()
{
    const QString previewFolder = qEnvironmentVariable("VELLUMO_PREVIEW_SNAPSHOT_DIR");
    const QString folder = qEnvironmentVariable("VELLUMO_SNAPSHOT_DIR");
    const bool isPreview = qEnvironmentVariableIsSet("VELLUMO_PREVIEW_HUD");
    const bool isSnapshot =
        !folder.isEmpty() && qEnvironmentVariableIsSet("VELLUMO_SNAPSHOT_NOTES");
    if (!folder.isEmpty() && qEnvironmentVariableIsSet("VELLUMO_SNAPSHOT_AUTH")) {
        mainWindow_->writeSignInSnapshots(folder, [this, isSnapshot] {
            if (!isSnapshot) { // which takes longer
                terminate();
            }
        });
    }
    if (!isPreview && !isSnapshot) {
        return;
    }
    preview_ = std::make_unique<Preview>(
        NotesEntranceController::Collaborators{.windows = foundation_->windows,
                                               .screens = foundation_->screens,
                                               .monitors = foundation_->platform.events(),
                                               .defaults = foundation_->defaults,
                                               .clock = foundation_->clock,
                                               .texts = foundation_->texts});
    preview_->show(isSnapshot || foundation_->texts.isEnglish());
    if (isSnapshot || !previewFolder.isEmpty()) {
        preview_->writeSnapshots(isSnapshot ? folder : previewFolder, [this] { terminate(); });
    }
}

void AppDelegate::perform(const LaunchRequest &request)
{
    const InstanceRequest asked = request.forInstance();
    if (!asked.action.isEmpty()) {
        onboarding_->postpone(false);
        applicationInterface_->activateAction(asked.action, false);
        return;
    }
    applicationOpen(asked.urls);
    if (request.isInBackground) {
        onboarding_->postpone(true);
    } else if (!onboarding_->presentIfNeeded()) {
        mainWindow_->showAtLaunch();
    }
}

void AppDelegate::applicationOpen(const QStringList &urls)
{
    for (const QString &url : urls) {
        if (!CommandLine::isOwnUrl(url)) {
            continue;
        }
        const bool isAwaited = account_->auth().isWorking();
        account_->handleCallback(url);
        if (isAwaited) {
            applicationShouldHandleReopen(); // the user is looking at the browser
        }
    }
}

void AppDelegate::applicationShouldHandleReopen()
{
    if (!onboarding_) {
        return; // the tray's icon, while the start is held up by an alert
    }
    if (!onboarding_->presentIfNeeded()) {
        mainWindow_->show();
    }
    if (std::exchange(asksWhenOpened_, false)) {
        const auto ask = [this] {
            foundation_->platform.accessibility().isProcessTrustedWithPrompt();
        };
        account_->auth().whenRestored(this, ask); // above the window
    }
}

void AppDelegate::startPermissionManager()
{
    OnboardingWiring::keepQuestion(foundation_->defaults, foundation_->consent);
    // The question of a start in the background waits until the program is opened.
    asksWhenOpened_ = isInBackground_ && !OnboardingWiring::isNeeded(foundation_->defaults);
    if (asksWhenOpened_) {
        foundation_->consent.hold();
    }
    Accessibility &accessibility = foundation_->platform.accessibility();
    permissionManager_ = std::make_unique<PermissionManager>(
        accessibility, foundation_->platform.workspace(), foundation_->clock,
        accessibility.isProcessTrustedWithPrompt());
    permissionManager_->startMonitoring();
    if (asksWhenOpened_) {
        foundation_->consent.release(false);
    }
}

void AppDelegate::sayUnusable(const QString &file)
{
    const BilingualText &texts = foundation_->texts;
    const QString detail =
        texts
            .pick(
                u"Two places in %1 have the same key. Nothing has been changed. Restore an "
                "earlier copy of the file, or move it elsewhere to begin a new one."_s,
                u"%1 中有两处使用同一个标识。文件没有改动。请恢复较早的副本，或把文件移到别处，重新开始。"_s)
            .arg(file);
    Alert(foundation_->engine)
        .ask({.message = texts.pick(u"Your notes cannot be opened"_s, u"无法打开你的笔记"_s),
              .informativeText = detail,
              .button = texts.pick(u"Quit"_s, u"退出"_s)});
}

void AppDelegate::createAccount()
{
    account_ = std::make_unique<AccountWiring>(
        AccountWiring::Collaborators{.config = foundation_->config,
                                     .secrets = foundation_->platform.secrets(),
                                     .workspace = foundation_->platform.workspace(),
                                     .http = foundation_->http,
                                     .clock = foundation_->clock,
                                     .texts = foundation_->texts,
                                     .defaults = foundation_->defaults});
}

std::unique_ptr<AIExplaining> AppDelegate::makeAIService()
{
    serviceSetup_ = std::make_unique<ServiceSetup>(
        ServiceSetup::Collaborators{.config = foundation_->config,
                                    .defaults = foundation_->defaults,
                                    .secrets = foundation_->platform.secrets(),
                                    .http = foundation_->http,
                                    .clock = foundation_->clock});
    serviceSetup_->tokenProvider = account_->tokenProvider();
    connect(serviceSetup_.get(), &ServiceSetup::serviceChanged, this,
            [this] { aiService_->setService(serviceSetup_->makeService()); });
    return serviceSetup_->makeService();
}

void AppDelegate::buildCapturePipeline()
{
    capture_ =
        std::make_unique<CaptureWiring>(*foundation_, *aiService_, *notesStore_,
                                        QFileInfo(NotesStore::defaultStorePath()).absolutePath());
}

void AppDelegate::wireSync()
{
    sync_ =
        std::make_unique<SyncWiring>(SyncWiring::Collaborators{.config = foundation_->config,
                                                               .auth = account_->auth(),
                                                               .store = *notesStore_,
                                                               .http = foundation_->http,
                                                               .clock = foundation_->clock,
                                                               .defaults = foundation_->defaults});
    capture_->coordinator().onNoteSaved =
        [sync = QPointer(sync_.get())](const ReadingNote & /*note*/) {
            if (sync) {
                sync->noteSaved();
            }
        };
}

void AppDelegate::wireExplainer()
{
    connect(&capture_->panel(), &ResultPanelController::serviceSettingsRequested, this,
            [this] { mainWindow_->showService(); });
    connect(&capture_->panel(), &ResultPanelController::noteRequested, this,
            [this] { mainWindow_->showNote(capture_->coordinator().closeOpenNote()); });
    connect(aiService_.get(), &ForwardingExplainer::lastFailureChanged, this, [this] {
        if (const auto &failure = aiService_->lastFailure()) {
            printDiagnostic(u"no answer from the explanation service: "_s + describe(*failure));
        }
    });
    // Not before the first windows are drawn; a request that comes earlier loads it itself.
    QTimer::singleShot(1s, this, [this] {
        if (!aiService_->answersAreSamples()) {
            foundation_->http.warmUp();
        }
    });
}

void AppDelegate::wirePermission()
{
    permission_ = std::make_unique<PermissionWiring>(
        PermissionWiring::Collaborators{.manager = *permissionManager_,
                                        .accessibility = foundation_->platform.accessibility(),
                                        .consent = foundation_->consent,
                                        .trigger = capture_->trigger(),
                                        .resultPanel = capture_->panel(),
                                        .engine = foundation_->engine,
                                        .texts = foundation_->texts});
}

void AppDelegate::createMainWindow()
{
    Foundation &with = *foundation_;
    computer_ = std::make_unique<ComputerWiring>(
        ComputerWiring::Collaborators{.desktop = {.platform = with.platform,
                                                  .tray = menus_->statusItem().hosts(),
                                                  .compositor = with.windows.compositor()},
                                      .permission = *permissionManager_,
                                      .service = *serviceSetup_,
                                      .explainer = *aiService_,
                                      .clock = with.clock,
                                      .texts = with.texts,
                                      .defaults = with.defaults});
    mainWindow_ = std::make_unique<MainWindowWiring>(MainWindowWiring::Collaborators{
        .engine = with.engine,
        .window = {.notesStore = *notesStore_,
                   .auth = account_->auth(),
                   .sync = &sync_->status(),
                   .defaults = with.defaults,
                   .clock = with.clock,
                   .texts = with.texts,
                   .makeComputer = [this] { return computer_->makeModel(); },
                   .makeTaps = [this] { return computer_->makeTaps(); },
                   .onCheckForUpdates = [this] { menus_->updaterManager().checkForUpdates(); },
                   .onQuit = [this] { terminate(); },
                   .canLookForUpdates = menus_->updaterManager().controller != nullptr,
                   .login = [this]() -> LoginStart & { return computer_->login(); }},
        .ownership = sync_->ownership(),
        .workspace = with.platform.workspace(),
        .panels = with.windows,
        .screens = with.screens,
        .resultPanel = capture_->panel(),
        .coordinator = capture_->coordinator()});
    connect(&capture_->entrance(), &NotesEntranceController::windowRequested, this,
            &AppDelegate::applicationShouldHandleReopen);
    connect(&capture_->entrance(), &NotesEntranceController::quitRequested, this,
            &AppDelegate::terminate);
    capture_->tracker().openNoteContext = [this] { return mainWindow_->openNoteContext(); };
}

void AppDelegate::prepareOnboarding()
{
    Foundation &with = *foundation_;
    onboarding_ = std::make_unique<OnboardingWiring>(OnboardingWiring::Collaborators{
        .window = {.defaults = with.defaults,
                   .auth = account_->auth(),
                   .accessibility = with.platform.accessibility(),
                   .events = with.platform.events(),
                   .clock = with.clock,
                   .engine = with.engine,
                   .texts = with.texts,
                   .keyboardFace = [&with] { return with.platform.keyboardFace(); }},
        .coordinator = capture_->coordinator(),
        .resultPanel = capture_->panel(),
        .notesEntrance = capture_->entrance(),
        .history = sync_->history(),
        .permission = *permissionManager_,
        .consent = with.consent});
    onboarding_->onFinish = [this] { mainWindow_->show(); };
    connect(onboarding_.get(), &OnboardingWiring::picturesWritten, this, &AppDelegate::terminate);
}

void AppDelegate::finishLaunchingWhenIdle()
{
    // The pill comes first. What the first panel needs is made once it is there, or soon anyway.
    const auto prepare = [this] {
        capture_->panel().prepare();
        mainWindow_->launchIsDone();
    };
    connect(&capture_->entrance(), &NotesEntranceController::appeared, this, prepare,
            Qt::QueuedConnection);
    QTimer::singleShot(500, this, prepare);
    QTimer::singleShot(0, this, [this, prepare] {
        if (!capture_->entrance().isShown()) {
            prepare(); // nothing else has loaded what the look is a type of
        }
        SessionBus &bus = foundation_->platform.sessionBus();
        if (bus.connection()) {
            followSessionBus();
        } else {
            connect(&bus, &SessionBus::opened, this, &AppDelegate::followSessionBus);
        }
    });
}

void AppDelegate::followSessionBus()
{
    const auto bus = foundation_->platform.sessionBus().connection();
    if (!bus) {
        return;
    }
    SystemLook &look = foundation_->look();
    const auto followLook = [this, &look] { menus_->statusItem().setDark(look.isDark()); };
    connect(&look, &SystemLook::changed, &menus_->statusItem(), followLook);
    followLook();
    look.follow(foundation_->platform.appearance());
    applicationInterface_->offerOn(*bus);
    menus_->statusItem().appearOn(*bus);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"

#include "app/AccountWiring.h"
#include "app/BuiltInUpdates.h"
#include "app/CommandLine.h"
#include "app/ComputerWiring.h"
#include "app/DailyUpdates.h"
#include "app/Foundation.h"
#include "app/MainMenu.h"
#include "app/MainWindowWiring.h"
#include "app/OnboardingWiring.h"
#include "app/PermissionManager.h"
#include "app/PermissionWiring.h"
#include "app/Preview.h"
#include "app/StatusItem.h"
#include "app/SyncWiring.h"
#include "app/TerminationSignals.h"
#include "app/UnsavedNotes.h"
#include "app/UpdaterManager.h"
#include "capture/AccessibilitySelectionReader.h"
#include "capture/ContextTracker.h"
#include "capture/ReadingBudget.h"
#include "capture/TriggerManager.h"
#include "capture/VellumoCoordinator.h"
#include "explain/ForwardingExplainer.h"
#include "explain/ServiceSetup.h"
#include "notes/NotesStore.h"
#include "panel/ResultPanelController.h"
#include "pill/NotesEntranceController.h"
#include "platform/Diagnostics.h"
#include "platform/Wiping.h"
#include "platform/dbus/ApplicationInterface.h"
#include "ui/Alert.h"
#include "ui/ApplicationFonts.h"
#include "ui/OrdinaryWindow.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>
#include <QWindow>
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
    resultPanel_->dismiss();
    return status;
}

void AppDelegate::terminate()
{
    // Not quit(), which first closes windows: an open question would count as answered.
    QApplication::exit();
}

void AppDelegate::applicationDidFinishLaunching()
{
    foundation_ = std::make_unique<Foundation>();
    configureMainMenu();
    configureStatusItem();
    createUpdaterManager();
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
    coordinator_->start();
    configureApplicationInterface();
    showPreviewHUD();
    finishLaunchingWhenIdle();
    printDiagnostic(u"ready — select text and double-tap Option (Alt)"_s);
}

void AppDelegate::configureMainMenu()
{
    const auto hide = [] {
        const auto windows = QGuiApplication::topLevelWindows();
        for (QWindow *window : windows) {
            if (window->isVisible() && !window->flags().testFlag(Qt::FramelessWindowHint)) {
                window->showMinimized();
            }
        }
        return true;
    };
    const auto checkForUpdates = [this] {
        updaterManager_->checkForUpdates();
        return true;
    };
    const auto quit = [this] {
        terminate();
        return true;
    };
    const auto edit = MainMenu::editItem;
    mainMenu_ = std::make_unique<MainMenu>(
        QList<MainMenu::Menu>{{u"vellumo"_s,
                               {{u"Check for Updates…"_s, {}, checkForUpdates},
                                {u"Hide vellumo"_s, Qt::CTRL | Qt::Key_H, hide},
                                {u"Quit vellumo"_s, Qt::CTRL | Qt::Key_Q, quit}}},
                              {u"Edit"_s,
                               {edit(u"Undo"_s, Qt::CTRL | Qt::Key_Z, "undo"),
                                edit(u"Redo"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Z, "redo"),
                                edit(u"Cut"_s, Qt::CTRL | Qt::Key_X, "cut"),
                                edit(u"Copy"_s, Qt::CTRL | Qt::Key_C, "copy"),
                                edit(u"Paste"_s, Qt::CTRL | Qt::Key_V, "paste"),
                                edit(u"Select All"_s, Qt::CTRL | Qt::Key_A, "selectAll")}}});
    connect(&OrdinaryWindows::of(foundation_->engine), &OrdinaryWindows::made, mainMenu_.get(),
            &MainMenu::attachTo);
}

void AppDelegate::configureStatusItem()
{
    statusItem_ = std::make_unique<StatusItem>();
    connect(statusItem_.get(), &StatusItem::activated, this,
            &AppDelegate::applicationShouldHandleReopen);
    QMenu &menu = statusItem_->menu();
    menu.addAction(u"vellumo is running"_s)->setEnabled(false);
    menu.addSeparator();
    menu.addAction(u"Check for Updates…"_s, this, [this] { updaterManager_->checkForUpdates(); });
    menu.addSeparator();
    menu.addAction(u"Quit vellumo"_s, Qt::CTRL | Qt::Key_Q, this, &AppDelegate::terminate);
}

void AppDelegate::createUpdaterManager()
{
    updaterManager_ = std::make_unique<UpdaterManager>(foundation_->engine);
    auto controller =
        makeUpdateController(foundation_->config,
                             {foundation_->http, foundation_->platform.workspace(),
                              foundation_->clock, foundation_->engine, foundation_->texts});
    if (controller) {
        dailyUpdates_ =
            std::make_unique<DailyUpdates>(*controller, foundation_->defaults, foundation_->clock);
        updaterManager_->controller = std::move(controller);
    }
}

void AppDelegate::configureApplicationInterface()
{
    applicationInterface_ = std::make_unique<ApplicationInterface>();
    connect(applicationInterface_.get(), &ApplicationInterface::activationRequested, this,
            &AppDelegate::applicationShouldHandleReopen);
    connect(applicationInterface_.get(), &ApplicationInterface::openRequested, this,
            &AppDelegate::applicationOpen);
    applicationInterface_->actions = {
        {u"explain"_s, [this] { coordinator_->handleTrigger(); }},
        {u"notes"_s, [this] { coordinator_->showNotesSummary(); }},
        {u"focus"_s, [this] { resultPanel_->focusPanel(); }},
        {u"quit"_s, [this] { terminate(); }},
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
    preview_ = std::make_unique<Preview>(NotesEntranceController::Collaborators{
        foundation_->windows, foundation_->screens, foundation_->platform.events(),
        foundation_->defaults, foundation_->clock, foundation_->texts});
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
    account_ = std::make_unique<AccountWiring>(AccountWiring::Collaborators{
        foundation_->config, foundation_->platform.secrets(), foundation_->platform.workspace(),
        foundation_->http, foundation_->clock, foundation_->texts, foundation_->defaults});
}

std::unique_ptr<AIExplaining> AppDelegate::makeAIService()
{
    serviceSetup_ = std::make_unique<ServiceSetup>(ServiceSetup::Collaborators{
        foundation_->config, foundation_->defaults, foundation_->platform.secrets(),
        foundation_->http, foundation_->clock});
    serviceSetup_->tokenProvider = account_->tokenProvider();
    connect(serviceSetup_.get(), &ServiceSetup::serviceChanged, this,
            [this] { aiService_->setService(serviceSetup_->makeService()); });
    return serviceSetup_->makeService();
}

void AppDelegate::buildCapturePipeline()
{
    LinuxPlatform &platform = foundation_->platform;
    resultPanel_ = std::make_unique<ResultPanelController>(
        foundation_->windows, foundation_->screens, platform.events(), foundation_->texts);
    unsavedNotes_ = std::make_unique<UnsavedNotes>(
        UnsavedNotes::Collaborators{*notesStore_, *resultPanel_, foundation_->texts},
        QFileInfo(NotesStore::defaultStorePath()).absolutePath());
    connect(resultPanel_.get(), &ResultPanelController::closed, unsavedNotes_.get(),
            &UnsavedNotes::panelClosed);
    notesEntrance_ =
        std::make_unique<NotesEntranceController>(NotesEntranceController::Collaborators{
            foundation_->windows, foundation_->screens, platform.events(), foundation_->defaults,
            foundation_->clock, foundation_->texts});
    readingBudget_ = std::make_unique<ReadingBudget>();
    selectionReader_ = std::make_unique<AccessibilitySelectionReader>(
        AccessibilitySelectionReader::Desktop{platform.workspace(), platform.accessibility(),
                                              platform.pasteboard(), platform.primarySelection(),
                                              platform.keys(), platform.events(),
                                              &foundation_->defaults},
        *readingBudget_);
    contextTracker_ = std::make_unique<ContextTracker>(
        platform.workspace(), platform.accessibility(), *readingBudget_, foundation_->clock);
    triggerManager_ = std::make_unique<TriggerManager>(platform.events());
    coordinator_ = std::make_unique<VellumoCoordinator>(VellumoCoordinator::Collaborators{
        *selectionReader_, *contextTracker_, *aiService_, *notesStore_, *resultPanel_,
        *notesEntrance_, foundation_->preferences, *triggerManager_, platform.workspace(),
        platform.accessibility(), foundation_->clock, platform.screenLock()});
    connect(unsavedNotes_.get(), &UnsavedNotes::noticed, coordinator_.get(),
            &VellumoCoordinator::showNotice);
}

void AppDelegate::wireSync()
{
    sync_ = std::make_unique<SyncWiring>(
        SyncWiring::Collaborators{foundation_->config, account_->auth(), *notesStore_,
                                  foundation_->http, foundation_->clock, foundation_->defaults});
    coordinator_->onNoteSaved = [sync = QPointer(sync_.get())](const ReadingNote & /*note*/) {
        if (sync) {
            sync->noteSaved();
        }
    };
}

void AppDelegate::wireExplainer()
{
    connect(resultPanel_.get(), &ResultPanelController::serviceSettingsRequested, this,
            [this] { mainWindow_->showService(); });
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
    permission_ = std::make_unique<PermissionWiring>(PermissionWiring::Collaborators{
        *permissionManager_, foundation_->platform.accessibility(), foundation_->consent,
        *triggerManager_, *resultPanel_, foundation_->engine, foundation_->texts});
}

void AppDelegate::createMainWindow()
{
    Foundation &with = *foundation_;
    computer_ = std::make_unique<ComputerWiring>(ComputerWiring::Collaborators{
        {with.platform, statusItem_->hosts(), with.windows.compositor()},
        *permissionManager_,
        *serviceSetup_,
        *aiService_,
        with.clock,
        with.texts,
        with.defaults});
    mainWindow_ = std::make_unique<MainWindowWiring>(MainWindowWiring::Collaborators{
        with.engine,
        {*notesStore_, account_->auth(), &sync_->status(), with.defaults, with.clock, with.texts,
         [this] { return computer_->makeModel(); }, [this] { updaterManager_->checkForUpdates(); },
         [this] { terminate(); }, updaterManager_->controller != nullptr},
        sync_->ownership(),
        with.platform.workspace(),
        with.windows,
        with.screens,
        *resultPanel_,
        *coordinator_});
    contextTracker_->openNoteContext = [this] { return mainWindow_->openNoteContext(); };
}

void AppDelegate::prepareOnboarding()
{
    Foundation &with = *foundation_;
    onboarding_ = std::make_unique<OnboardingWiring>(OnboardingWiring::Collaborators{
        {with.defaults, account_->auth(), with.platform.accessibility(), with.platform.events(),
         with.clock, with.engine, with.texts},
        *coordinator_,
        *resultPanel_,
        *notesEntrance_,
        sync_->history(),
        *permissionManager_,
        with.consent});
    onboarding_->onFinish = [this] { mainWindow_->show(); };
    connect(onboarding_.get(), &OnboardingWiring::picturesWritten, this, &AppDelegate::terminate);
}

void AppDelegate::finishLaunchingWhenIdle()
{
    // The pill comes first. What the first panel needs is made once it is there, or soon anyway.
    const auto prepare = [this] {
        resultPanel_->prepare();
        mainWindow_->launchIsDone();
    };
    connect(notesEntrance_.get(), &NotesEntranceController::appeared, this, prepare,
            Qt::QueuedConnection);
    QTimer::singleShot(500, this, prepare);
    QTimer::singleShot(0, this, [this] {
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
    const auto followLook = [this, &look] { statusItem_->setDark(look.isDark()); };
    connect(&look, &SystemLook::changed, statusItem_.get(), followLook);
    followLook();
    look.follow(foundation_->platform.appearance());
    applicationInterface_->offerOn(*bus);
    statusItem_->appearOn(*bus);
}

} // namespace vellumo

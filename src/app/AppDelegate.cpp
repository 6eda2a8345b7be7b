// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppDelegate.h"

#include "app/AppConfig.h"
#include "app/DataFolderLock.h"
#include "app/LinuxPlatform.h"
#include "app/PermissionManager.h"
#include "app/TerminationSignals.h"
#include "app/UserPreferences.h"
#include "capture/AccessibilitySelectionReader.h"
#include "capture/ContextTracker.h"
#include "capture/ReadingBudget.h"
#include "capture/TriggerManager.h"
#include "capture/VellumoCoordinator.h"
#include "explain/MockAIService.h"
#include "notes/NotesStore.h"
#include "panel/ResultPanelController.h"
#include "pill/EmptyNotesEntrance.h"
#include "platform/Diagnostics.h"
#include "platform/qt/SettingsDefaultsStore.h"
#include "platform/qt/SystemClock.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/QtScreens.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/ConsentDialog.h"
#include "ui/QmlEngine.h"
#include "ui/look/SystemLook.h"

#include <QApplication>
#include <QFileInfo>
#include <QQmlEngine>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace vellumo {

/// In the order in which they are built; each may use those above it.
struct AppDelegate::Objects {
    Objects();

    AppConfig config = AppConfig::load();
    SettingsDefaultsStore defaults{SettingsDefaultsStore::defaultPath()};
    UserPreferences preferences{defaults};
    SystemClock clock;

    struct Engine : QQmlEngine {
        Engine() { prepareEngine(*this); }
    } engine;
    BilingualText texts{[this] { return preferences.preferredOutputLanguage(); }};
    ConsentDialog consent{engine, texts};
    QtScreens screens;
    QtFloatingWindows windows{engine, [this] { return SystemLook::of(engine)->isMotionReduced(); }};
    LinuxPlatform platform{defaults, consent};

    PermissionManager permissionManager{platform.accessibility(), clock,
                                        platform.accessibility().isProcessTrustedWithPrompt()};
    NotesStore notesStore{NotesStore::defaultStorePath()};
    std::unique_ptr<AIExplaining> aiService;
    ResultPanelController resultPanel{windows, screens, platform.events(), texts};
    EmptyNotesEntrance notesEntrance;
    ReadingBudget readingBudget;
    AccessibilitySelectionReader selectionReader{
        {platform.workspace(), platform.accessibility(), platform.pasteboard(),
         platform.primarySelection(), platform.keys(), platform.events()},
        readingBudget};
    ContextTracker contextTracker{platform.workspace(), platform.accessibility(), readingBudget};
    TriggerManager triggerManager{platform.events()};
    VellumoCoordinator coordinator;
};

AppDelegate::Objects::Objects()
    : aiService(makeAIService(config, clock))
    , coordinator({selectionReader, contextTracker, *aiService, notesStore, resultPanel,
                   notesEntrance, preferences, triggerManager, platform.workspace(),
                   platform.accessibility(), clock})
{
    texts.follow(defaults);
}

AppDelegate::AppDelegate(QApplication &application) : application_(application) { }

AppDelegate::~AppDelegate() = default;

int AppDelegate::run()
{
    DataFolderLock lock(QFileInfo(NotesStore::defaultStorePath()).absolutePath());
    if (!lock.tryLock()) {
        return EXIT_FAILURE;
    }
    const TerminationSignals termination;
    // Not quit(), which first closes windows: a question that stands would count as answered.
    connect(&termination, &TerminationSignals::received, &application_,
            [] { QApplication::exit(); });
    QApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();

    applicationDidFinishLaunching();
    const int status = QApplication::exec();
    // What is on screen becomes a note, as whenever the panel closes.
    objects_->resultPanel.dismiss();
    return status;
}

void AppDelegate::applicationDidFinishLaunching()
{
    objects_ = std::make_unique<Objects>();
    watchPermission();
    objects_->coordinator.start();

    // What the first panel needs is made once everything listens.
    QTimer::singleShot(0, this, [this] {
        objects_->resultPanel.prepare();
        followDesktopLook();
    });
    printDiagnostic(u"ready — select text and double-tap Option (Alt)"_s);
}

std::unique_ptr<AIExplaining> AppDelegate::makeAIService(const AppConfig &config, Clock &clock)
{
    if (config.value(u"OPENAI_API_KEY"_s)) {
        printDiagnostic(u"this version answers from samples — using MockAIService"_s);
    } else {
        printDiagnostic(u"OPENAI_API_KEY not set — using MockAIService"_s);
    }
    return std::make_unique<MockAIService>(clock);
}

void AppDelegate::followDesktopLook()
{
    SessionBus &bus = objects_->platform.sessionBus();
    const auto follow = [this, &bus] {
        if (const auto connection = bus.connection()) {
            SystemLook::of(objects_->engine)->followDesktop(*connection);
        }
    };
    if (bus.connection()) {
        follow();
    } else {
        connect(&bus, &SessionBus::opened, this, follow);
    }
}

void AppDelegate::watchPermission()
{
    PermissionManager &permission = objects_->permissionManager;
    Accessibility &accessibility = objects_->platform.accessibility();
    permission.onChange = [this, &accessibility, &permission](bool isTrusted) {
        if (isTrusted) {
            objects_->triggerManager.start();
        } else {
            accessibility.isProcessTrustedWithPrompt();
            permission.setTrusted(accessibility.isProcessTrusted());
        }
    };
    permission.startMonitoring();

    objects_->resultPanel.isTrusted = [&accessibility] { return accessibility.isProcessTrusted(); };
    objects_->resultPanel.onAllowAccessibility = [&accessibility] {
        accessibility.isProcessTrustedWithPrompt();
    };
    objects_->resultPanel.answersAreSamples = [] { return true; };
}

} // namespace vellumo

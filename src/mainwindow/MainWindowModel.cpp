// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/MainWindowModel.h"

#include "account/AuthService.h"
#include "computer/ComputerModel.h"
#include "insights/NotesInsights.h"
#include "insights/NotesOverview.h"
#include "library/NoteDeletion.h"
#include "library/NotesExporter.h"
#include "library/NotesLibrary.h"
#include "library/OpenedNote.h"
#include "library/PageHosting.h"
#include "mainwindow/AccountStatus.h"
#include "mainwindow/NotesFileState.h"
#include "platform/DefaultsStore.h"
#include "platform/LoginStart.h"
#include "settings/SettingsKeys.h"
#include "settings/UserPreferences.h"
#include "sync/SyncReporting.h"
#include "ui/BilingualText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
constexpr QLatin1StringView english("English");
constexpr QLatin1StringView chinese("Chinese");
} // namespace

/// The models of the pages.
struct MainWindowModel::Pages {
    Pages(const Collaborators &with, PageHosting &host)
        : account(with.auth, with.sync, with.texts)
        , library(with.notesStore, with.clock, with.texts)
        , notesFile(with.notesStore, with.defaults, with.texts)
        , overview(library, with.clock, with.texts)
        , insights(library, with.texts)
        , deletion(with.notesStore, *library.selection(), with.texts)
        , exporter(library, host, with.texts)
        , note(library, host, with.texts)
    {
    }

    AccountStatus account;
    NotesLibrary library;
    NotesFileState notesFile;
    NotesOverview overview;
    NotesInsights insights;
    NoteDeletion deletion;
    NotesExporter exporter;
    OpenedNote note;
    std::unique_ptr<ComputerModel> computer;
    std::unique_ptr<TapReach> taps;
};

MainWindowModel::MainWindowModel(const Collaborators &collaborators, PageHosting &host,
                                 QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , host_(host)
    , pages_(std::make_unique<Pages>(collaborators, host))
{
    connect(&with_.auth, &AuthService::userChanged, this, &MainWindowModel::userChanged);
    connect(&with_.auth, &AuthService::isWorkingChanged, this, [this] {
        if (!with_.auth.isWorking() && std::exchange(isSigningIn_, false) && with_.sync
            && with_.auth.isSignedIn() && with_.auth.problem().isEmpty()) {
            with_.sync->announceArrivals();
        }
    });
    connect(&with_.defaults, &DefaultsStore::changed, this, [this](const QString &key) {
        if (key == settings::preferredOutputLanguage.name) {
            Q_EMIT languageChanged();
        } else if (key == settings::looksForUpdates.name) {
            Q_EMIT updatesChanged();
        }
    });
    connect(&with_.defaults, &DefaultsStore::failed, this,
            &MainWindowModel::unsavedSettingsChanged);
    if (with_.auth.isSignedIn()) {
        userChanged();
    }
}

MainWindowModel::~MainWindowModel() = default;

AccountStatus *MainWindowModel::account()
{
    return &pages_->account;
}

NotesLibrary *MainWindowModel::library()
{
    return &pages_->library;
}

NotesFileState *MainWindowModel::notesFile()
{
    return &pages_->notesFile;
}

NotesOverview *MainWindowModel::overview()
{
    return &pages_->overview;
}

NotesInsights *MainWindowModel::insights()
{
    return &pages_->insights;
}

NoteDeletion *MainWindowModel::deletion()
{
    return &pages_->deletion;
}

NotesExporter *MainWindowModel::exporter()
{
    return &pages_->exporter;
}

OpenedNote *MainWindowModel::note()
{
    return &pages_->note;
}

bool MainWindowModel::hasUnsavedSettings() const
{
    return with_.defaults.hasFailed() && !isNoticeAcknowledged_;
}

void MainWindowModel::acknowledgeUnsavedSettings()
{
    isNoticeAcknowledged_ = true;
    Q_EMIT unsavedSettingsChanged();
}

bool MainWindowModel::asksForUpdates() const
{
    return with_.canLookForUpdates && !settings::looksForUpdates.isSet(with_.defaults);
}

bool MainWindowModel::looksForUpdates() const
{
    return settings::looksForUpdates.value(with_.defaults);
}

void MainWindowModel::setLooksForUpdates(bool looks)
{
    settings::looksForUpdates.set(with_.defaults, looks);
}

bool MainWindowModel::asksForLoginStart()
{
    if (!with_.login || settings::askedForLoginStart.value(with_.defaults)) {
        return false;
    }
    if (login_ == nullptr) {
        login_ = &with_.login();
        connect(login_, &LoginStart::changed, this, &MainWindowModel::loginStartChanged);
    }
    return login_->state() == LoginStart::State::Off;
}

void MainWindowModel::answerLoginStart(bool starts)
{
    settings::askedForLoginStart.set(with_.defaults, true);
    if (starts && computer() != nullptr) {
        computer()->setStartsAtLogin(true);
        if (!computer()->startsAtLogin()) {
            setPage(Page::Computer);
        }
    }
    Q_EMIT loginStartChanged();
}

void MainWindowModel::checkForUpdates()
{
    if (with_.onCheckForUpdates) {
        with_.onCheckForUpdates();
    }
}

void MainWindowModel::quit()
{
    if (with_.onQuit) {
        with_.onQuit();
    }
}

bool MainWindowModel::showsDashboard() const
{
    return with_.auth.isSignedIn() || !with_.auth.isConfigured()
        || (!isAskedToSignIn_ && settings::usesWithoutAccount.value(with_.defaults));
}

void MainWindowModel::useWithoutAccount()
{
    isAskedToSignIn_ = false;
    with_.auth.cancelSignIn();
    settings::usesWithoutAccount.set(with_.defaults, true);
    Q_EMIT faceChanged();
}

void MainWindowModel::askToSignOut()
{
    const BilingualText &texts = with_.texts;
    host_.ask(
        {.message = texts.pick(u"Sign out?"_s, u"要退出登录吗？"_s),
         .informativeText = texts.pick(
             u"Notes stay on this computer. New ones are not uploaded until you sign in again."_s,
             u"笔记会留在这台电脑上。重新登录之前，新的笔记不会上传。"_s),
         .agreement = texts.pick(u"Sign out"_s, u"退出登录"_s),
         .refusal = texts.pick(u"Cancel"_s, u"取消"_s),
         .onAgreed = [this] { with_.auth.signOut(); }});
}

void MainWindowModel::askForSignIn()
{
    isAskedToSignIn_ = true;
    Q_EMIT faceChanged();
}

void MainWindowModel::signIn()
{
    isSigningIn_ = true;
    with_.auth.signInWithGoogle();
}

void MainWindowModel::setShown(bool shown)
{
    pages_->library.setShown(shown);
    if (shown) {
        pages_->overview.followClock();
    }
    if (shown && !std::exchange(isShown_, shown) && showsDashboard()) {
        pull();
    }
    isShown_ = shown;
}

void MainWindowModel::pull()
{
    if (with_.sync && with_.auth.isSignedIn()) {
        with_.sync->pull();
    }
}

void MainWindowModel::userChanged()
{
    setShowsSettings(false);
    pages_->exporter.setOpen(false);
    isAskedToSignIn_ = false;
    if (settings::usesWithoutAccount.isSet(with_.defaults)) {
        settings::usesWithoutAccount.remove(with_.defaults);
    }
    if (!with_.auth.isSignedIn()) {
        resetViews();
    }
    Q_EMIT faceChanged();
}

void MainWindowModel::resetViews()
{
    setPage(Page::Home);
    pages_->library.selection()->setActive(false);
    pages_->library.setQuery({});
    pages_->library.widen();
    pages_->deletion.dismiss();
    pages_->exporter.dismiss();
}

void MainWindowModel::setPage(Page page)
{
    pages_->note.close();
    if (page != page_) {
        page_ = page;
        pages_->library.selection()->setActive(false);
        pages_->deletion.dismiss();
        pages_->insights.setShown(page == Page::Insights);
        Q_EMIT pageChanged();
        pull();
    }
}

void MainWindowModel::setShowsSettings(bool shows)
{
    if (shows != showsSettings_) {
        showsSettings_ = shows;
        Q_EMIT pageChanged();
    }
}

void MainWindowModel::goToSearch()
{
    setPage(Page::Notes);
    Q_EMIT searchRequested();
}

ComputerModel *MainWindowModel::computer()
{
    if (!pages_->computer && with_.makeComputer) {
        pages_->computer = with_.makeComputer();
    }
    return pages_->computer.get();
}

TapReach *MainWindowModel::taps()
{
    if (!pages_->taps && with_.makeTaps) {
        pages_->taps = with_.makeTaps();
    }
    return pages_->taps.get();
}

/// Shows the page whatever is open or in front of it.
void MainWindowModel::showOnly(Page page)
{
    if (!showsDashboard()) {
        useWithoutAccount();
    }
    setShowsSettings(false);
    pages_->exporter.setOpen(false);
    setPage(page);
}

void MainWindowModel::goToNote(const QUuid &id)
{
    showOnly(Page::Notes);
    pages_->library.setQuery({});
    pages_->library.widen();
    pages_->note.openNote(id);
}

void MainWindowModel::goToService()
{
    if (!computer()) {
        return;
    }
    showOnly(Page::Computer);
    computer()->askForService();
}

MainWindowModel::Language MainWindowModel::language() const
{
    const QString name = UserPreferences(with_.defaults).preferredOutputLanguage();
    return name == chinese ? Language::Chinese
        : name == english  ? Language::English
                           : Language::Other;
}

void MainWindowModel::setLanguage(Language language)
{
    if (language != Language::Other) {
        settings::preferredOutputLanguage.set(with_.defaults,
                                              language == Language::English ? english : chinese);
    }
}

void MainWindowModel::goToAllNotes()
{
    pages_->library.widen();
    setPage(Page::Notes);
}

void MainWindowModel::goToPlace(int index)
{
    if (const std::optional<ReadingContext> place = pages_->insights.placeAt(index)) {
        setPage(Page::Notes);
        pages_->library.setGrouping(NoteRowsModel::Grouping::ByPlace);
        pages_->library.setQuery({});
        pages_->library.narrowTo(*place);
    }
}

void MainWindowModel::goToDay(int index)
{
    if (const auto day = pages_->insights.dayAt(index)) {
        goToDays(*day, *day);
    }
}

void MainWindowModel::goToMonth(int index)
{
    if (const auto first = pages_->insights.monthAt(index)) {
        goToDays(*first, first->addMonths(1).addDays(-1));
    }
}

void MainWindowModel::goToDays(QDate first, QDate last)
{
    setPage(Page::Notes);
    pages_->library.setGrouping(NoteRowsModel::Grouping::ByDay);
    pages_->library.setQuery({});
    pages_->library.narrowTo(NotesLibrary::Days{first, last});
}

} // namespace vellumo

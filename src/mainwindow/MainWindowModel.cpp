// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/MainWindowModel.h"

#include "platform/DefaultsStore.h"
#include "settings/SettingsKeys.h"
#include "ui/BilingualText.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
}

MainWindowModel::MainWindowModel(const Collaborators &collaborators, QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , preferences_(collaborators.defaults)
    , library_(collaborators.notesStore, collaborators.clock, collaborators.texts)
    , notesFile_(collaborators.notesStore, collaborators.defaults)
    , overview_(library_, collaborators.clock, collaborators.texts)
    , insights_(library_, collaborators.texts)
    , exporter_(library_, collaborators.texts)
    , note_(library_, collaborators.texts)
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

bool MainWindowModel::hasUnsavedSettings() const
{
    return with_.defaults.hasFailed() && !knowsUnsavedSettings_;
}

void MainWindowModel::acknowledgeUnsavedSettings()
{
    knowsUnsavedSettings_ = true;
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
    return with_.auth.isSignedIn()
        || (!isAskedToSignIn_ && settings::usesWithoutAccount.value(with_.defaults));
}

void MainWindowModel::useWithoutAccount()
{
    isAskedToSignIn_ = false;
    with_.auth.cancelSignIn();
    settings::usesWithoutAccount.set(with_.defaults, true);
    Q_EMIT faceChanged();
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
    library_.setShown(shown);
    if (shown) {
        overview_.followClock();
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
    exporter_.setOpen(false);
    isAskedToSignIn_ = false;
    if (settings::usesWithoutAccount.isSet(with_.defaults)) {
        settings::usesWithoutAccount.remove(with_.defaults);
    }
    if (!with_.auth.isSignedIn()) {
        leaveEverything();
    }
    Q_EMIT faceChanged();
}

void MainWindowModel::leaveEverything()
{
    setPage(u"home"_s);
    library_.selection()->setActive(false);
    library_.setQuery({});
    library_.leavePlace();
    exporter_.dismiss();
}

void MainWindowModel::setPage(const QString &page)
{
    note_.close();
    if (page != page_) {
        page_ = page;
        insights_.setShown(page == "insights"_L1);
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
    setPage(u"notes"_s);
    Q_EMIT searchRequested();
}

ComputerModel *MainWindowModel::computer()
{
    if (!computer_ && with_.makeComputer) {
        computer_ = with_.makeComputer();
    }
    return computer_.get();
}

void MainWindowModel::goToService()
{
    if (!computer()) {
        return;
    }
    if (!showsDashboard()) {
        useWithoutAccount();
    }
    setShowsSettings(false);
    exporter_.setOpen(false);
    setPage(u"computer"_s);
    computer()->askForService();
}

QString MainWindowModel::language() const
{
    return preferences_.preferredOutputLanguage();
}

void MainWindowModel::setLanguage(const QString &language)
{
    settings::preferredOutputLanguage.set(with_.defaults, language);
}

void MainWindowModel::openRow(int row)
{
    if (const NoteWithContext *entry = library_.noteAt(row)) {
        note_.open(*entry);
    }
}

void MainWindowModel::openLatest(int row)
{
    if (const NoteWithContext *entry = library_.latestAt(row)) {
        note_.open(*entry);
    }
}

void MainWindowModel::openPlace(int index)
{
    const std::optional<ReadingContext> place = insights_.placeAt(index);
    setPage(u"notes"_s);
    library_.setGrouping(u"place"_s);
    library_.setQuery({});
    library_.setPlace(place);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <memory>

Q_MOC_INCLUDE("account/AuthService.h")
Q_MOC_INCLUDE("computer/ComputerModel.h")
Q_MOC_INCLUDE("insights/NotesInsights.h")
Q_MOC_INCLUDE("insights/NotesOverview.h")
Q_MOC_INCLUDE("library/NoteDeletion.h")
Q_MOC_INCLUDE("library/NotesExporter.h")
Q_MOC_INCLUDE("library/NotesLibrary.h")
Q_MOC_INCLUDE("library/OpenedNote.h")
Q_MOC_INCLUDE("mainwindow/AccountStatus.h")
Q_MOC_INCLUDE("mainwindow/NotesFileState.h")
Q_MOC_INCLUDE("sync/SyncReporting.h")

namespace vellumo {

class AccountStatus;
class AuthService;
class BilingualText;
class Clock;
class ComputerModel;
class DefaultsStore;
class LoginStart;
class NoteDeletion;
class NotesExporter;
class NotesFileState;
class NotesInsights;
class NotesLibrary;
class NotesOverview;
class NotesStoring;
class OpenedNote;
class PageHosting;
class SyncReporting;
class TapReach;

/// View model of the main window: navigation, settings, and the models of its pages.
class MainWindowModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool showsDashboard READ showsDashboard NOTIFY faceChanged)
    Q_PROPERTY(Page page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(bool showsSettings READ showsSettings WRITE setShowsSettings NOTIFY pageChanged)
    Q_PROPERTY(Language language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(vellumo::AuthService *auth READ auth CONSTANT)
    Q_PROPERTY(vellumo::NotesLibrary *library READ library CONSTANT)
    Q_PROPERTY(vellumo::NotesFileState *notesFile READ notesFile CONSTANT)
    Q_PROPERTY(vellumo::NotesOverview *overview READ overview CONSTANT)
    Q_PROPERTY(vellumo::NotesInsights *insights READ insights CONSTANT)
    Q_PROPERTY(vellumo::NoteDeletion *deletion READ deletion CONSTANT)
    Q_PROPERTY(vellumo::NotesExporter *exporter READ exporter CONSTANT)
    Q_PROPERTY(vellumo::OpenedNote *note READ note CONSTANT)
    Q_PROPERTY(vellumo::AccountStatus *account READ account CONSTANT)
    Q_PROPERTY(vellumo::SyncReporting *sync READ sync CONSTANT)
    Q_PROPERTY(bool hasComputer READ hasComputer CONSTANT)
    Q_PROPERTY(bool hasUnsavedSettings READ hasUnsavedSettings NOTIFY unsavedSettingsChanged)
    Q_PROPERTY(bool hasProgramMenu READ hasProgramMenu CONSTANT)
    Q_PROPERTY(bool canLookForUpdates READ canLookForUpdates CONSTANT)
    Q_PROPERTY(bool asksForUpdates READ asksForUpdates NOTIFY updatesChanged)
    Q_PROPERTY(
        bool looksForUpdates READ looksForUpdates WRITE setLooksForUpdates NOTIFY updatesChanged)
    Q_PROPERTY(bool asksForLoginStart READ asksForLoginStart NOTIFY loginStartChanged)
    Q_PROPERTY(vellumo::ComputerModel *computer READ computer CONSTANT)
    Q_PROPERTY(vellumo::TapReach *taps READ taps CONSTANT)

public:
    enum class Page : quint8 { Home, Notes, Insights, Computer };
    Q_ENUM(Page)
    /// The languages that can be chosen in the settings.
    enum class Language : quint8 { Chinese, English, Other };
    Q_ENUM(Language)

    /// All must outlive the model. Without `sync` its state is not shown; without `makeComputer`
    /// there is no page "This computer".
    struct Collaborators {
        NotesStoring &notesStore;
        AuthService &auth;
        SyncReporting *sync;
        DefaultsStore &defaults;
        const Clock &clock;
        BilingualText &texts;
        std::function<std::unique_ptr<ComputerModel>()> makeComputer = {};
        /// May return null where the desktop needs no change.
        std::function<std::unique_ptr<TapReach>()> makeTaps = {};
        /// The entries of the tray's menu, for desktops without a tray. Set both or none.
        std::function<void()> onCheckForUpdates = {};
        std::function<void()> onQuit = {};
        /// Whether this build can check for new versions daily.
        bool canLookForUpdates = false;
        /// Called while the user was not asked whether to start at login. Without it nothing asks.
        std::function<LoginStart &()> login = {};
    };

    /// `host` must outlive the model.
    MainWindowModel(const Collaborators &collaborators, PageHosting &host,
                    QObject *parent = nullptr);
    ~MainWindowModel() override;
    Q_DISABLE_COPY_MOVE(MainWindowModel)

    /// Returns whether to show the dashboard: the user is signed in or has chosen to go without an
    /// account, or there is no service to sign in to. Otherwise the sign-in view is shown.
    [[nodiscard]] bool showsDashboard() const;
    /// Shows the dashboard without an account, in later runs as well, until the next sign-in or
    /// sign-out.
    Q_INVOKABLE void useWithoutAccount();
    /// Signs in through the browser. After success the sync reports how many notes arrive.
    Q_INVOKABLE void signIn();
    /// Asks whether to sign out, and signs out if the user agrees.
    Q_INVOKABLE void askToSignOut();
    /// Shows the sign-in view to a user without an account.
    Q_INVOKABLE void askForSignIn();

    /// Called when the window is shown or hidden. Showing it starts a sync pass.
    void setShown(bool shown);

    /// Setting the page closes an open note.
    [[nodiscard]] Page page() const { return page_; }
    void setPage(Page page);
    [[nodiscard]] bool showsSettings() const { return showsSettings_; }
    void setShowsSettings(bool shows);
    /// Opens the page of notes and focuses the search field.
    Q_INVOKABLE void goToSearch();

    /// Opens a note. A user who is not signed in continues without an account.
    void goToNote(const QUuid &id);
    /// Opens the service settings. A user who is not signed in continues without an account.
    void goToService();

    /// The preferred language of explanations and of all texts. `Other` cannot be set.
    [[nodiscard]] Language language() const;
    void setLanguage(Language language);

    [[nodiscard]] AuthService *auth() const { return &with_.auth; }
    [[nodiscard]] AccountStatus *account();
    [[nodiscard]] NotesLibrary *library();
    [[nodiscard]] NotesFileState *notesFile();
    [[nodiscard]] NotesOverview *overview();
    [[nodiscard]] NotesInsights *insights();
    [[nodiscard]] NoteDeletion *deletion();
    [[nodiscard]] NotesExporter *exporter();
    [[nodiscard]] OpenedNote *note();
    [[nodiscard]] SyncReporting *sync() const { return with_.sync; }
    [[nodiscard]] bool hasComputer() const { return static_cast<bool>(with_.makeComputer); }
    /// Creates the model on first use.
    [[nodiscard]] ComputerModel *computer();
    /// Returns what asks for a change to the desktop, created on first use; null where none is
    /// needed.
    [[nodiscard]] TapReach *taps();

    /// Returns whether the settings cannot be saved and the user has not acknowledged it in this
    /// run.
    [[nodiscard]] bool hasUnsavedSettings() const;
    Q_INVOKABLE void acknowledgeUnsavedSettings();

    [[nodiscard]] bool canLookForUpdates() const { return with_.canLookForUpdates; }
    /// Returns whether to ask the user for daily checks for updates.
    [[nodiscard]] bool asksForUpdates() const;
    [[nodiscard]] bool looksForUpdates() const;
    void setLooksForUpdates(bool looks);

    /// Returns whether to ask the user for the start at login, which is off.
    [[nodiscard]] bool asksForLoginStart();
    /// Opens the page "This computer" if it could not be turned on, to say so.
    Q_INVOKABLE void answerLoginStart(bool starts);

    [[nodiscard]] bool hasProgramMenu() const { return static_cast<bool>(with_.onQuit); }
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void quit();

    /// Opens the page of notes without a filter by place.
    Q_INVOKABLE void goToAllNotes();
    /// Opens the page of notes, filtered by a place of the insights.
    Q_INVOKABLE void goToPlace(int index);
    /// Open the page of notes, filtered by a day or a month of the insights.
    Q_INVOKABLE void goToDay(int index);
    Q_INVOKABLE void goToMonth(int index);

Q_SIGNALS:
    void faceChanged();
    void pageChanged();
    void searchRequested();
    void languageChanged();
    void unsavedSettingsChanged();
    void updatesChanged();
    void loginStartChanged();

private:
    struct Pages;

    void showOnly(Page page);
    void userChanged();
    void goToDays(QDate first, QDate last);
    /// Resets all view state for the next user.
    void resetViews();
    void pull();

    Collaborators with_;
    PageHosting &host_;
    std::unique_ptr<Pages> pages_;
    Page page_ = Page::Home;
    bool showsSettings_ = false;
    bool isAskedToSignIn_ = false;
    bool isSigningIn_ = false; ///< the sign-in was started by signIn()
    bool isShown_ = false;
    bool isNoticeAcknowledged_ = false;
    LoginStart *login_ = nullptr; ///< while the question for it is open
};

} // namespace vellumo

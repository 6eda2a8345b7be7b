// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthError.h"
#include "onboarding/SurveyModel.h"
#include "platform/KeyboardFace.h"
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <memory>
#include <optional>

class QQmlEngine;

namespace vellumo {

class Accessibility;
class AuthService;
class BilingualText;
class Clock;
class DefaultsStore;
class EventMonitorHandle;
class EventMonitoring;

/// Leads a new user through the first run, one card at a time. Its window exists only while it is
/// shown; QML draws the cards after the properties here. Main thread only.
class OnboardingWindowController final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(int position READ position NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
    Q_PROPERTY(QString progressText READ progressText NOTIFY changed)
    Q_PROPERTY(QString card READ card NOTIFY cardShown)
    Q_PROPERTY(bool canGoBack READ canGoBack NOTIFY changed)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY changed)
    Q_PROPERTY(bool offersAccount READ offersAccount CONSTANT)
    Q_PROPERTY(bool isOpeningBrowser READ isOpeningBrowser NOTIFY changed)
    Q_PROPERTY(bool awaitsPage READ awaitsPage NOTIFY changed)
    Q_PROPERTY(QString signInError READ signInError NOTIFY changed)
    Q_PROPERTY(bool isTrusted READ isTrusted NOTIFY changed)
    Q_PROPERTY(QStringList keyLabels READ keyLabels NOTIFY cardShown)
    Q_PROPERTY(bool hasRightOption READ hasRightOption NOTIFY cardShown)
    Q_PROPERTY(bool isOptionDown READ isOptionDown NOTIFY changed)
    Q_PROPERTY(bool isTestPassed READ isTestPassed NOTIFY changed)
    Q_PROPERTY(bool isDemoOver READ isDemoOver NOTIFY changed)
    Q_PROPERTY(vellumo::SurveyModel *survey READ survey CONSTANT)

public:
    /// All must outlive the controller. The engine needs the import path of prepareEngine().
    struct Collaborators {
        DefaultsStore &defaults;
        AuthService &auth;
        Accessibility &accessibility;
        EventMonitoring &events;
        Clock &clock;
        QQmlEngine &engine;
        BilingualText &texts;
        std::function<KeyboardFace()> keyboardFace = [] { return KeyboardFace(); };
    };

    explicit OnboardingWindowController(const Collaborators &collaborators,
                                        QObject *parent = nullptr);
    ~OnboardingWindowController() override;
    Q_DISABLE_COPY_MOVE(OnboardingWindowController)

    /// The last card has been left. The window is gone already.
    std::function<void()> onFinish;
    /// The pill is to draw attention, or no longer.
    std::function<void(bool isHighlighted)> onNotesPillHighlight;
    /// The pill's demonstration is to be played; to be answered with `done` when it has ended.
    std::function<void(std::function<void()> done)> onPlayNotesDemo;
    /// What the user said about themselves; absent where nothing was chosen.
    std::function<void(const std::optional<QString> &hearAbout, const std::optional<QString> &role,
                       const std::optional<QString> &industry)>
        onSubmitProfile;

    /// Opens the window at the card of this name; without one, or with one that no card has, at the
    /// first.
    void present(const std::optional<QString> &phase);

    /// Brings the window to the front; false when there is none.
    bool raise();

    /// The next card; after the last, the end.
    Q_INVOKABLE void advance();
    /// The card that a step back leads to, if any.
    [[nodiscard]] std::optional<Phase> backPhase() const;
    Q_INVOKABLE void goBack();
    /// Goes on from a question without an answer, also if one was chosen.
    Q_INVOKABLE void skipQuestion();

    /// A double tap happened. Answers whether it may lead to an explanation.
    [[nodiscard]] bool handleDemoTrigger();
    /// An explanation has come on screen.
    void noteExplanationShown();

    [[nodiscard]] Phase phase() const { return phase_; }
    [[nodiscard]] bool isCompleted() const { return completed_; }
    /// Null while closed.
    [[nodiscard]] QQuickWindow *window() const { return window_; }

    // for the drawing

    [[nodiscard]] int position() const { return static_cast<int>(phase_); }
    /// The number of cards; the questions at the end come only with an account.
    [[nodiscard]] int count() const;
    [[nodiscard]] QString progressText() const;
    /// The QML type that draws the card.
    [[nodiscard]] QString card() const;
    [[nodiscard]] bool canGoBack() const { return backPhase().has_value(); }

    [[nodiscard]] bool isSignedIn() const;
    /// Whether there is a service to sign in to.
    [[nodiscard]] bool offersAccount() const;
    /// A sign-in is under way.
    [[nodiscard]] bool isOpeningBrowser() const { return isSigningIn_; }
    /// Its page has not come back from the browser yet.
    [[nodiscard]] bool awaitsPage() const;
    [[nodiscard]] QString signInError() const;
    Q_INVOKABLE void signIn();
    /// For a user who has closed the page.
    Q_INVOKABLE void openSignInPageAgain();
    /// Ends the wait for the browser; the card stays.
    Q_INVOKABLE void cancelSignIn();
    /// Goes on without a session, now and when the main window is shown, and waits for the browser
    /// no longer.
    Q_INVOKABLE void useWithoutAccount();

    [[nodiscard]] bool isTrusted() const { return isTrusted_; }
    Q_INVOKABLE void allow();
    Q_INVOKABLE void openAccessibilitySettings();

    [[nodiscard]] QStringList keyLabels() const { return keyboard_.letters; }
    [[nodiscard]] bool hasRightOption() const { return keyboard_.hasRightOption; }
    [[nodiscard]] bool isOptionDown() const { return isOptionDown_; }
    /// Whether what the card asks to try has been seen to work.
    [[nodiscard]] bool isTestPassed() const { return isTestPassed_; }
    [[nodiscard]] bool isDemoOver() const { return isDemoOver_; }

    [[nodiscard]] SurveyModel *survey() { return &survey_; }

    /// Changes the language of everything to the other one.
    Q_INVOKABLE void switchLanguage();
    Q_INVOKABLE void userClosed();

Q_SIGNALS:
    void changed();
    /// Another card is shown, or the same one afresh.
    void cardShown();
    /// The user closed the window before the questions at the end. It is deleted already, and
    /// nothing is stored.
    void closed();
    /// The card where the panel demonstrates is no longer shown.
    void selectTestLeft();
    /// The platform is about to be asked for trust because the user wants that.
    void trustPromptRequested();
    void accessibilitySettingsRequested();

private:
    [[nodiscard]] FirstRunState state() const;
    void show(Phase phase);
    void leaveCard();
    [[nodiscard]] bool createWindow();
    void submitProfile();
    void finish();

    void userChanged();
    void signInEnded(const std::optional<AuthError> &error);

    void watchPermission();
    void refreshPermission();

    void watchOption();
    void setOptionDown(bool isDown);

    void introduceNotes();

    Collaborators with_;
    QPointer<QQuickWindow> window_;
    Phase phase_ = Phase::signIn;
    int visit_ = 0; ///< changes whenever a card is shown
    bool completed_ = false;

    bool isSigningIn_ = false;
    std::optional<AuthError> signInError_;

    std::unique_ptr<QObject> permissionTimer_; ///< while the permission card is shown
    bool isTrusted_ = false;

    std::unique_ptr<EventMonitorHandle> optionTapMonitor_; ///< while the key test is shown
    KeyboardFace keyboard_;
    bool isOptionDown_ = false;
    bool isTestPassed_ = false;
    bool isDemoOver_ = false;

    SurveyModel survey_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "onboarding/OnboardingWindowController.h"

#include "account/AuthService.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "platform/EventMonitoring.h"
#include "settings/SettingsKeys.h"
#include "settings/UserPreferences.h"
#include "ui/BilingualText.h"
#include "ui/OrdinaryWindow.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto permissionInterval = 800ms;

} // namespace

OnboardingWindowController::OnboardingWindowController(const Collaborators &collaborators,
                                                       QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , survey_(collaborators.texts)
{
    connect(&with_.auth, &AuthService::userChanged, this, &OnboardingWindowController::userChanged);
    connect(&with_.auth, &AuthService::isWorkingChanged, this,
            &OnboardingWindowController::changed);
    connect(&with_.accessibility, &Accessibility::trustChanged, this,
            &OnboardingWindowController::refreshPermission);
    connect(&with_.texts, &BilingualText::languageChanged, this,
            &OnboardingWindowController::changed);
}

OnboardingWindowController::~OnboardingWindowController()
{
    // while the bindings of what is still open or about to go find us whole
    const QObjectList windows = children();
    qDeleteAll(windows);
}

FirstRunState OnboardingWindowController::state() const
{
    return {with_.accessibility.isProcessTrusted(), isSignedIn()};
}

void OnboardingWindowController::present(const std::optional<QString> &phase)
{
    const Phase first = isSignedIn() ? Phase::privacy : Phase::signIn;
    completed_ = false;
    show(phaseNamed(phase.value_or(QString())).value_or(first));
    if (window_ || createWindow()) {
        raise();
    } else {
        Q_EMIT closed();
    }
}

bool OnboardingWindowController::createWindow()
{
    window_ = makeOrdinaryWindow(
        with_.engine, u"Onboarding/OnboardingWindow"_s,
        {{u"flow"_s, QVariant::fromValue(this)}, {u"texts"_s, QVariant::fromValue(&with_.texts)}},
        this);
    if (!window_) {
        return false;
    }
    centreOnScreen(*window_, window_->property("roomAbove").toInt());
    connect(window_, &QWindow::activeChanged, this, [this] {
        if (window_ && !window_->isActive()) {
            setOptionDown(false); // its release goes to another window
        }
    });
    return true;
}

bool OnboardingWindowController::raise()
{
    if (window_) {
        takeKeyboard(*window_);
    }
    return window_;
}

QString OnboardingWindowController::progressText() const
{
    return with_.texts.pick(u"Step %1 of %2"_s, u"第 %1 步，共 %2 步"_s)
        .arg(QString::number(position() + 1), QString::number(count()));
}

QString OnboardingWindowController::card() const
{
    switch (phase_) {
    case Phase::signIn:
        return u"SignInCard"_s;
    case Phase::privacy:
        return u"PrivacyCard"_s;
    case Phase::permission:
        return u"PermissionCard"_s;
    case Phase::keyTest:
        return u"KeyTestCard"_s;
    case Phase::selectTest:
        return u"SelectTestCard"_s;
    case Phase::notesIntro:
        return u"NotesIntroCard"_s;
    case Phase::hearAbout:
    case Phase::role:
    case Phase::industry:
        break;
    }
    return u"SurveyCard"_s;
}

void OnboardingWindowController::advance()
{
    if (completed_) {
        return;
    }
    if (const auto next = phaseAfter(phase_, state())) {
        show(*next);
        return;
    }
    submitProfile();
    finish();
}

void OnboardingWindowController::submitProfile()
{
    if (onSubmitProfile) {
        onSubmitProfile(survey_.answerOf(Phase::hearAbout), survey_.answerOf(Phase::role),
                        survey_.answerOf(Phase::industry));
    }
}

void OnboardingWindowController::skipQuestion()
{
    survey_.forget(phase_);
    advance();
}

int OnboardingWindowController::count() const
{
    return isSignedIn() || isQuestion(phase_) ? phaseCount : static_cast<int>(Phase::hearAbout);
}

std::optional<Phase> OnboardingWindowController::backPhase() const
{
    return phaseBefore(phase_, state());
}

void OnboardingWindowController::goBack()
{
    if (const auto previous = backPhase()) {
        show(*previous);
    }
}

void OnboardingWindowController::show(Phase phase)
{
    leaveCard();
    phase_ = phase;
    ++visit_;
    signInError_.reset();
    isTestPassed_ = false;
    isDemoOver_ = false;
    isTrusted_ = with_.accessibility.isProcessTrusted();
    if (phase == Phase::permission) {
        permissionTimer_ = std::make_unique<QObject>();
        watchPermission();
    } else if (phase == Phase::keyTest) {
        keyboard_ = with_.keyboardFace();
        watchOption();
    }
    survey_.show(phase);
    Q_EMIT changed();
    Q_EMIT cardShown();
    if (phase == Phase::notesIntro) {
        introduceNotes();
    }
}

void OnboardingWindowController::leaveCard()
{
    permissionTimer_.reset();
    optionTapMonitor_.reset();
    isOptionDown_ = false;
    if (visit_ > 0 && phase_ == Phase::selectTest) {
        Q_EMIT selectTestLeft();
    }
    if (visit_ > 0 && phase_ == Phase::notesIntro && onNotesPillHighlight) {
        onNotesPillHighlight(false);
    }
}

void OnboardingWindowController::finish()
{
    settings::hasCompletedOnboarding.set(with_.defaults, true);
    leaveCard();
    closeForGood(window_);
    completed_ = true;
    if (const auto callback = onFinish) {
        callback();
    }
}

void OnboardingWindowController::userClosed()
{
    if (!window_) {
        return;
    }
    if (isQuestion(phase_)) { // all that matters is done
        submitProfile();
        finish();
        return;
    }
    leaveCard();
    closeForGood(window_);
    Q_EMIT closed();
}

bool OnboardingWindowController::isSignedIn() const
{
    return with_.auth.user().has_value();
}

bool OnboardingWindowController::offersAccount() const
{
    return with_.auth.isConfigured();
}

QString OnboardingWindowController::signInError() const
{
    return signInError_ ? describe(*signInError_, with_.texts) : QString();
}

bool OnboardingWindowController::awaitsPage() const
{
    return isSigningIn_ && with_.auth.awaitsPage();
}

void OnboardingWindowController::signIn()
{
    if (isSigningIn_) {
        return;
    }
    isSigningIn_ = true;
    signInError_.reset();
    Q_EMIT changed();
    with_.auth.signInWithGoogle(this, [this](const auto &error) { signInEnded(error); });
}

void OnboardingWindowController::openSignInPageAgain()
{
    with_.auth.openSignInPageAgain();
}

void OnboardingWindowController::cancelSignIn()
{
    with_.auth.cancelSignIn();
}

/// The user may have gone on meanwhile.
void OnboardingWindowController::signInEnded(const std::optional<AuthError> &error)
{
    isSigningIn_ = false;
    const bool isShown = window_ && phase_ == Phase::signIn;
    if (isShown && !error) {
        advance();
        return;
    }
    if (isShown && error->kind != AuthError::Kind::Cancelled) {
        signInError_ = error;
    }
    Q_EMIT changed();
}

/// The session of a keyring that was slow needs no sign-in.
void OnboardingWindowController::userChanged()
{
    if (window_ && phase_ == Phase::signIn && isSignedIn() && !isSigningIn_) {
        advance();
    } else {
        Q_EMIT changed();
    }
}

void OnboardingWindowController::useWithoutAccount()
{
    if (!isSignedIn()) {
        settings::usesWithoutAccount.set(with_.defaults, true);
        with_.auth.cancelSignIn();
    }
    advance();
}

void OnboardingWindowController::watchPermission()
{
    with_.clock.after(permissionInterval, permissionTimer_.get(), [this] {
        with_.accessibility.refreshTrust();
        refreshPermission();
        watchPermission();
    });
}

void OnboardingWindowController::refreshPermission()
{
    const bool isTrusted = with_.accessibility.isProcessTrusted();
    if (std::exchange(isTrusted_, isTrusted) != isTrusted) {
        Q_EMIT changed();
    }
}

void OnboardingWindowController::allow()
{
    Q_EMIT trustPromptRequested();
    with_.accessibility.isProcessTrustedWithPrompt();
    refreshPermission();
}

void OnboardingWindowController::openAccessibilitySettings()
{
    Q_EMIT accessibilitySettingsRequested();
}

void OnboardingWindowController::watchOption()
{
    optionTapMonitor_ = with_.events.addLocalMonitor(
        maskOf(EventType::FlagsChanged),
        [self = QPointer<OnboardingWindowController>(this)](const Event &event) {
            if (self) {
                self->setOptionDown((event.modifierFlags & ModifierFlag::Option) != 0);
            }
            return true;
        });
}

void OnboardingWindowController::setOptionDown(bool isDown)
{
    if (std::exchange(isOptionDown_, isDown) != isDown) {
        Q_EMIT changed();
    }
}

bool OnboardingWindowController::handleDemoTrigger()
{
    if (!window_) {
        return false;
    }
    if (phase_ == Phase::keyTest && !isTestPassed_) {
        isTestPassed_ = true;
        Q_EMIT changed();
    }
    return phase_ == Phase::selectTest;
}

void OnboardingWindowController::noteExplanationShown()
{
    if (window_ && phase_ == Phase::selectTest && !completed_ && !isTestPassed_) {
        isTestPassed_ = true;
        Q_EMIT changed();
    }
}

void OnboardingWindowController::introduceNotes()
{
    if (onNotesPillHighlight) {
        onNotesPillHighlight(true);
    }
    const auto ended = [self = QPointer<OnboardingWindowController>(this), visit = visit_] {
        if (self && visit == self->visit_) {
            self->isDemoOver_ = true;
            Q_EMIT self->changed();
        }
    };
    if (onPlayNotesDemo) {
        onPlayNotesDemo(ended);
    } else {
        ended();
    }
}

void OnboardingWindowController::switchLanguage()
{
    settings::preferredOutputLanguage.set(with_.defaults,
                                          with_.texts.pick(u"Chinese"_s, u"English"_s));
}

} // namespace vellumo

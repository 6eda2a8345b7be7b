// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "onboarding/OnboardingWindowController.h"

#include "account/AuthService.h"
#include "app/UserPreferences.h"
#include "onboarding/Survey.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "platform/Diagnostics.h"
#include "platform/EventMonitoring.h"
#include "ui/BilingualText.h"
#include <QQmlComponent>
#include <QQmlEngine>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto permissionInterval = 800ms;
// A browser tab that was closed never answers.
constexpr auto signInPatience = 20s;

} // namespace

OnboardingWindowController::OnboardingWindowController(const Collaborators &collaborators,
                                                       QObject *parent)
    : QObject(parent)
    , with_(collaborators)
{
    connect(&with_.auth, &AuthService::userChanged, this, &OnboardingWindowController::userChanged);
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
    } else if (const auto callback = onClosed) {
        callback();
    }
}

bool OnboardingWindowController::createWindow()
{
    QQmlComponent component(&with_.engine,
                            QUrl(u"qrc:/qt/qml/Vellumo/Onboarding/OnboardingWindow.qml"_s));
    QObject *object = component.isReady()
        ? component.createWithInitialProperties({{u"flow"_s, QVariant::fromValue(this)},
                                                 {u"texts"_s, QVariant::fromValue(&with_.texts)}})
        : nullptr;
    window_ = qobject_cast<QQuickWindow *>(object);
    if (!window_) {
        delete object;
        printDiagnostic(component.errorString());
        return false;
    }
    QQmlEngine::setObjectOwnership(window_, QQmlEngine::CppOwnership);
    window_->QObject::setParent(this); // deleted later, but never after us
    connect(window_, &QWindow::activeChanged, this, [this] {
        if (window_ && !window_->isActive()) {
            setOptionDown(false); // its release goes to another window
        }
    });
    if (onWindowMade) {
        onWindowMade(*window_);
    }
    return true;
}

bool OnboardingWindowController::raise()
{
    if (!window_) {
        return false;
    }
    window_->show();
    window_->raise();
    window_->requestActivate();
    return true;
}

void OnboardingWindowController::closeWindow()
{
    if (window_) {
        window_->disconnect(this);
        window_->hide();
        window_->deleteLater();
        window_.clear();
    }
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
    if (onSubmitProfile) {
        onSubmitProfile(answer(Phase::hearAbout), answer(Phase::role), answer(Phase::industry));
    }
    finish();
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
    isSigningIn_ = false;
    signInError_.reset();
    isTestPassed_ = false;
    isDemoOver_ = false;
    isTrusted_ = with_.accessibility.isProcessTrusted();
    if (phase == Phase::permission) {
        permissionTimer_ = std::make_unique<QObject>();
        watchPermission();
    } else if (phase == Phase::keyTest) {
        watchOption();
    }
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
    if (visit_ > 0 && phase_ == Phase::notesIntro && onNotesPillHighlight) {
        onNotesPillHighlight(false);
    }
}

void OnboardingWindowController::finish()
{
    with_.defaults.setValue(DefaultsKey::hasCompletedOnboarding.toString(), true);
    leaveCard();
    closeWindow();
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
    leaveCard();
    closeWindow();
    if (const auto callback = onClosed) {
        callback();
    }
}

bool OnboardingWindowController::isSignedIn() const
{
    return with_.auth.user().has_value();
}

QString OnboardingWindowController::signInError() const
{
    return signInError_ ? describe(*signInError_, with_.texts) : QString();
}

void OnboardingWindowController::signIn()
{
    if (isOpeningBrowser()) {
        return;
    }
    ++visit_; // what an earlier attempt still says is of no interest
    isSigningIn_ = true;
    isSignInSlow_ = false;
    signInError_.reset();
    Q_EMIT changed();
    with_.clock.after(signInPatience, this, [this, visit = visit_] {
        if (visit == visit_ && isSigningIn_) {
            isSignInSlow_ = true;
            Q_EMIT changed();
        }
    });
    with_.auth.signInWithGoogle(this, [this, visit = visit_](const auto &error) {
        if (visit == visit_) {
            signInEnded(error);
        }
    });
}

void OnboardingWindowController::signInEnded(const std::optional<AuthError> &error)
{
    isSigningIn_ = false;
    signInError_ = error;
    if (!error && window_) {
        advance();
    } else {
        Q_EMIT changed();
    }
}

/// A session that was not asked for on this visit of the card: of an earlier attempt, or of a
/// keyring that was slow.
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
        with_.defaults.setValue(DefaultsKey::usesWithoutAccount.toString(), true);
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
    if (onTrustPrompt) {
        onTrustPrompt();
    }
    with_.accessibility.isProcessTrustedWithPrompt();
    refreshPermission();
}

void OnboardingWindowController::openAccessibilitySettings()
{
    if (onOpenAccessibilitySettings) {
        onOpenAccessibilitySettings();
    }
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

QString OnboardingWindowController::surveyTitle() const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? with_.texts.pick(survey->english, survey->chinese) : QString();
}

int OnboardingWindowController::surveyColumns() const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? survey->columns : 0;
}

QStringList OnboardingWindowController::surveyOptions() const
{
    QStringList labels;
    if (const Survey *survey = surveyOf(phase_)) {
        for (const SurveyOption &option : survey->options) {
            labels.append(option.english);
        }
    }
    return labels;
}

int OnboardingWindowController::surveyChoice() const
{
    return static_cast<int>(surveyOptions().indexOf(surveyAnswer()));
}

QString OnboardingWindowController::chineseLabel(int option) const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? survey->options.value(option).chinese : QString();
}

QString OnboardingWindowController::iconFile(int option) const
{
    const Survey *survey = surveyOf(phase_);
    return survey != nullptr ? surveyIconFile(survey->options.value(option).icon) : QString();
}

void OnboardingWindowController::choose(const QString &option)
{
    if (surveyOptions().contains(option)) {
        surveyAnswers_.insert(phase_, option);
        Q_EMIT changed();
    }
}

std::optional<QString> OnboardingWindowController::answer(Phase phase) const
{
    const auto found = surveyAnswers_.constFind(phase);
    return found != surveyAnswers_.constEnd() ? std::optional(*found) : std::nullopt;
}

void OnboardingWindowController::switchLanguage()
{
    with_.defaults.setValue(DefaultsKey::preferredOutputLanguage.toString(),
                            with_.texts.pick(u"Chinese"_s, u"English"_s));
}

} // namespace vellumo

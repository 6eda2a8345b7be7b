// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/OnboardingWiring.h"

#include "account/AuthService.h"
#include "app/OnboardingPreview.h"
#include "app/PermissionManager.h"
#include "capture/VellumoCoordinator.h"
#include "panel/ResultPanelControlling.h"
#include "pill/NotesEntranceControlling.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "settings/SettingsKeys.h"
#include "sync/DataConnectHistory.h"
#include "ui/ConsentDialog.h"

using namespace std::chrono_literals;

namespace vellumo {

namespace {
constexpr auto untilPictures = 800ms;
}

OnboardingWiring::OnboardingWiring(const Collaborators &with)
    : with_(with)
    , keepsQuestion_(isNeeded(with.window.defaults))
{
}

OnboardingWiring::~OnboardingWiring() = default;

bool OnboardingWiring::isNeeded(const DefaultsStore &defaults)
{
    return qEnvironmentVariableIsSet("VELLUMO_ONBOARDING")
        || !settings::hasCompletedOnboarding.value(defaults);
}

void OnboardingWiring::keepQuestion(const DefaultsStore &defaults, ConsentDialog &consent)
{
    if (isNeeded(defaults)) {
        consent.hold();
    }
}

void OnboardingWiring::giveQuestionBack(bool isStillWanted)
{
    if (std::exchange(keepsQuestion_, false)) {
        with_.consent.release(isStillWanted);
    }
}

void OnboardingWiring::postpone(bool isSilent)
{
    giveQuestionBack(!isSilent);
}

bool OnboardingWiring::presentIfNeeded()
{
    if (isOver_ || (!onboardingController_ && !isNeeded(with_.window.defaults))) {
        return false;
    }
    if (onboardingController_) {
        onboardingController_->raise();
        return true;
    }
    create();
    connectDemonstrations();
    with_.window.auth.whenRestored(this, [this] {
        const bool isForced = qEnvironmentVariableIsSet("VELLUMO_ONBOARDING_PHASE");
        onboardingController_->present(
            isForced ? std::optional(qEnvironmentVariable("VELLUMO_ONBOARDING_PHASE"))
                     : std::nullopt);
        const QString folder = qEnvironmentVariable("VELLUMO_PREVIEW_SNAPSHOT_DIR");
        if (!folder.isEmpty() && !qEnvironmentVariableIsSet("VELLUMO_PREVIEW_HUD")) {
            with_.window.clock.after(untilPictures, this,
                                     [this, folder] { writePreviewSnapshots(folder); });
        }
    });
    return true;
}

void OnboardingWiring::create()
{
    onboardingController_ = std::make_unique<OnboardingWindowController>(with_.window);
    OnboardingWindowController &onboarding = *onboardingController_;
    using Controller = OnboardingWindowController;
    connect(&onboarding, &Controller::trustPromptRequested, this,
            [this] { giveQuestionBack(true); });
    connect(&onboarding, &Controller::accessibilitySettingsRequested, this, [this] {
        giveQuestionBack(true);
        with_.permission.openAccessibilitySettings();
    });
    onboarding.onSubmitProfile = [this](const auto &hearAbout, const auto &role,
                                        const auto &industry) {
        // Its failures are its own: the first run ends all the same.
        with_.history.saveProfile(hearAbout, role, industry, this,
                                  [](SyncError::Kind /*error*/) {});
    };
    onboarding.onFinish = [this] {
        end();
        if (onFinish) {
            onFinish();
        }
    };
    connect(&onboarding, &Controller::closed, this, &OnboardingWiring::end);
}

void OnboardingWiring::connectDemonstrations()
{
    OnboardingWindowController &onboarding = *onboardingController_;
    // Left by keyboard, the card would leave the panel over the next ones.
    connect(&onboarding, &OnboardingWindowController::selectTestLeft, this,
            [this] { with_.resultPanel.dismiss(); });
    onboarding.onNotesPillHighlight = [this](bool isHighlighted) {
        with_.notesEntrance.setHighlighted(isHighlighted);
        if (!isHighlighted) {
            with_.notesEntrance.endOnboardingDemo(); // the cards are closed
        }
    };
    onboarding.onPlayNotesDemo = [this](std::function<void()> done) {
        with_.coordinator.playNotesPillDemo(std::move(done));
    };
    const QPointer<OnboardingWindowController> shown(&onboarding);
    with_.coordinator.demoMode = true;
    with_.coordinator.onExplanationShown = [shown] {
        if (shown) {
            shown->noteExplanationShown();
        }
    };
    with_.coordinator.onDemoTrigger = [shown, coordinator = QPointer(&with_.coordinator)] {
        if (shown && coordinator && shown->handleDemoTrigger()) {
            coordinator->triggerDemo();
        }
    };
}

void OnboardingWiring::end()
{
    isOver_ = true;
    with_.coordinator.demoMode = false;
    giveQuestionBack(false);
}

void OnboardingWiring::writePreviewSnapshots(const QString &folder)
{
    preview_ = std::make_unique<OnboardingPreview>(with_.window);
    preview_->writeSnapshots(folder, [this] { Q_EMIT picturesWritten(); });
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "onboarding/OnboardingWindowController.h"

namespace vellumo {

class ConsentDialog;
class DataConnectHistory;
class NotesEntranceControlling;
class OnboardingPreview;
class PermissionManager;
class ResultPanelControlling;
class VellumoCoordinator;

/// Connects the first run with the rest of the program. Until it is over, a double tap only
/// demonstrates.
class OnboardingWiring : public QObject {
    Q_OBJECT

public:
    /// All must outlive the wiring, which takes the coordinator's callbacks for demonstrations.
    struct Collaborators {
        OnboardingWindowController::Collaborators window;
        VellumoCoordinator &coordinator;
        ResultPanelControlling &resultPanel;
        NotesEntranceControlling &notesEntrance;
        const DataConnectHistory &history;
        PermissionManager &permission;
        ConsentDialog &consent;
    };

    explicit OnboardingWiring(const Collaborators &with);
    ~OnboardingWiring() override;
    Q_DISABLE_COPY_MOVE(OnboardingWiring)

    /// Called when the user has completed the first run.
    std::function<void()> onFinish;

    /// Returns whether a launch begins with the first run.
    [[nodiscard]] static bool isNeeded(const DefaultsStore &defaults);

    /// Holds the permission question back for the card that explains it. To be called before the
    /// question is asked at launch.
    static void keepQuestion(const DefaultsStore &defaults, ConsentDialog &consent);

    /// Shows the first run or brings it to the front; false when it is not needed or already over.
    bool presentIfNeeded();

    /// Leaves the first run to the next time the program is opened, because it was started for
    /// something else or in the background.
    void postpone(bool isSilent);

Q_SIGNALS:
    /// The pictures that a developer asked for are written.
    void picturesWritten();

private:
    void create();
    void connectDemonstrations();
    void end();
    void giveQuestionBack(bool isStillWanted);
    void writePreviewSnapshots(const QString &folder);

    Collaborators with_;
    std::unique_ptr<OnboardingWindowController> onboardingController_; ///< since it was needed
    std::unique_ptr<OnboardingPreview> preview_; ///< only when a developer asks for it
    bool keepsQuestion_;
    bool isOver_ = false;
};

} // namespace vellumo

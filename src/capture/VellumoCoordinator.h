// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/AIExplaining.h"
#include "notes/ReadingNote.h"
#include "panel/IslandContent.h"
#include "settings/UserPreferences.h"
#include <QList>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace vellumo {

class Accessibility;
class Clock;
class ContextTracking;
struct Conversation;
class NotesEntranceControlling;
class NotesStoring;
class ResultPanelControlling;
class ScreenLock;
class SelectionReading;
class TriggerManager;
class Workspace;

/// The spine of the program: carries a double tap to an explanation on screen, its follow-ups, and
/// a saved note. Main thread only; no failure leaves it other than as a text in the panel.
class VellumoCoordinator : public QObject {
    Q_OBJECT

public:
    /// Everything must outlive the coordinator.
    struct Collaborators {
        SelectionReading &selectionReader;
        ContextTracking &contextTracker;
        AIExplaining &aiService;
        NotesStoring &notesStore;
        ResultPanelControlling &resultPanelController;
        NotesEntranceControlling &notesEntranceController;
        UserPreferences userPreferences;
        TriggerManager &triggerManager;
        Workspace &workspace;
        const Accessibility &accessibility;
        const Clock &clock;
        const ScreenLock &screenLock;
    };

    explicit VellumoCoordinator(const Collaborators &collaborators, QObject *parent = nullptr);
    ~VellumoCoordinator() override;

    /// Called each time an explanation, or the demonstration's answer, has been put on screen.
    std::function<void()> onExplanationShown;

    /// While true a double tap reads nothing and only calls onDemoTrigger.
    bool demoMode = false;
    std::function<void()> onDemoTrigger;

    /// Called after a note has been added or its follow-ups updated.
    std::function<void(const ReadingNote &)> onNoteSaved;

    /// Wires the trigger and the panel, starts listening and shows the pill. Once, after the
    /// callbacks are set.
    void start();

    /// What a double tap does. Nothing while the screen is locked.
    void handleTrigger();

    /// Opens the list of all notes; one that is chosen comes back on screen with its thread.
    void showNotesSummary();

    /// Brings a note back on screen with its thread, to ask further. Nothing when it is not stored.
    void reopenNote(const QUuid &id);

    /// Shows what belongs to no selection and leaves no note.
    void showNotice(const IslandContent &notice);

    /// Shows the demonstration's answer.
    void triggerDemo();

    /// Plays the pill's demonstration, then calls `completion`.
    void playNotesPillDemo(std::function<void()> completion);

    [[nodiscard]] std::optional<ReadingContext> currentContext() const { return currentContext_; }

    /// The conversation of the answer shown last: the selection, its explanation, and then a
    /// question and, if it came, an answer each.
    [[nodiscard]] QList<ChatTurn> followUpTranscript() const;

private:
    /// Where something on screen was read; better known as long as it is searched for.
    using Place = std::shared_ptr<std::optional<ReadingContext>>;

    [[nodiscard]] QString text(const QString &english, const QString &chinese) const;

    [[nodiscard]] Place findPlace();
    void present(const IslandContent &content, const Place &place, std::function<void()> onDismiss);
    void showError(const QString &message, ErrorHelp help = ErrorHelp::none);
    void beginPresentation(const Place &place);
    void explain(const QString &selection, const Place &place);
    void showExplanation(const ExplanationResult &result, SampleAnswers samples,
                         const QString &selection, const Place &place);
    void showEmptySelection();

    void seedTranscript(const QString &selectedText, const ExplanationResult &result);
    void handleFollowUp(const QString &question);
    void handleResultDismissed(Conversation &conversation, const ExplanationResult &result,
                               const QString &sourceText,
                               const std::optional<ReadingContext> &context);

    void reopenLatest(const NoteWithContext &pair);
    void reopenNote(const ReadingNote &note, const ReadingContext &context);
    void handleReopenedNoteDismissed(Conversation &conversation, ReadingNote note,
                                     const ReadingContext &context, qsizetype baselineFollowUps);
    void noteSaved(const ReadingNote &note);
    void updateNotesEntrance();

    void observeFrontmostAppChanges();
    void handleActiveContextChanged();

    Collaborators with_;
    std::optional<ReadingContext> currentContext_;
    Place shownPlace_; ///< of what was put on screen last; null where it has none
    int presentations_ = 0; ///< how often a panel has come where there was none
    std::shared_ptr<Conversation> conversation_; ///< of the answer shown last; null before any
};

} // namespace vellumo

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

/// Coordinates the way from a double tap to an explanation on screen, its follow-ups and a saved
/// note. Failures are shown as a text in the panel. Main thread only.
class VellumoCoordinator : public QObject {
    Q_OBJECT

public:
    /// All must outlive the coordinator.
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

    /// Called each time an explanation, or the demonstration's answer, has been shown.
    std::function<void()> onExplanationShown;

    /// While true a double tap reads nothing and only calls onDemoTrigger.
    bool demoMode = false;
    std::function<void()> onDemoTrigger;

    /// Called after a note has been added or its follow-ups updated.
    std::function<void(const ReadingNote &)> onNoteSaved;

    /// Connects the trigger and the panel, starts listening and shows the pill. To be called once,
    /// after the callbacks are set.
    void start();

    /// Handles a double tap. Does nothing while the screen is locked.
    void handleTrigger();

    /// Opens the list of all notes. A chosen note is reopened with its thread.
    void showNotesSummary();

    /// Shows a note with its thread, to ask further questions. Does nothing when it is not stored.
    void reopenNote(const QUuid &id);

    /// Closes the panel. Returns the note that is kept of what it showed; null if there is none.
    QUuid closeOpenNote();

    /// Shows content that belongs to no selection and is not saved as a note.
    void showNotice(const IslandContent &notice);

    /// Shows the demonstration's answer.
    void triggerDemo();

    /// Plays the pill's demonstration, then calls `completion`.
    void playNotesPillDemo(std::function<void()> completion);

    [[nodiscard]] std::optional<ReadingContext> currentContext() const { return currentContext_; }

    /// Returns the conversation of the answer shown last: the selection, its explanation, and each
    /// follow-up question with its answer, if there is one.
    [[nodiscard]] QList<ChatTurn> followUpTranscript() const;

Q_SIGNALS:
    /// Emitted when the panel shows an answer that becomes a note, or changes one, once it closes;
    /// and again with each follow-up.
    void noteOpened(const vellumo::NoteWithContext &note);
    /// Emitted when the panel with this note has closed, and the store has the note.
    void noteClosed(const QUuid &id);

private:
    /// The place of what is shown, shared so that a search can refine it.
    using Place = std::shared_ptr<std::optional<ReadingContext>>;

    [[nodiscard]] QString text(const QString &english, const QString &chinese) const;

    [[nodiscard]] Place findPlace();
    void present(const IslandContent &content, const Place &place, std::function<void()> onDismiss);
    void showError(const QString &message, ErrorHelp help = ErrorHelp::None,
                   const std::optional<ExplanationFailure> &failure = {});
    void beginPresentation(const Place &place);
    void explain(const QString &selection, const Place &place);
    void showExplanation(const ExplanationResult &result, SampleAnswers samples,
                         const QString &selection, const Place &place);
    void showEmptySelection();

    void seedTranscript(const QString &selectedText, const ExplanationResult &result);
    void handleFollowUp(const QString &question);
    void answerFollowUp(const std::shared_ptr<Conversation> &conversation);
    void retryFollowUp(const std::shared_ptr<Conversation> &conversation);
    void handleResultDismissed(Conversation &conversation, ReadingNote note,
                               const std::optional<ReadingContext> &context);

    void reopenLatest(const NoteWithContext &pair);
    void reopenNote(const ReadingNote &note, const ReadingContext &context);
    void handleReopenedNoteDismissed(Conversation &conversation, ReadingNote note,
                                     const ReadingContext &context, qsizetype baselineFollowUps);
    void announceOpenNote();
    void closeNote(const QUuid &id);
    void noteSaved(const ReadingNote &note);
    void updateNotesEntrance();

    void observeFrontmostAppChanges();
    void handleActiveContextChanged();

    Collaborators with_;
    std::optional<ReadingContext> currentContext_;
    Place shownPlace_; ///< place of what was shown last; null if it has none
    std::optional<ReadingNote> openNote_; ///< as the store would get it if the panel closed now
    std::function<void()> retry_; ///< asks again for what has failed; empty otherwise
    int presentations_ = 0; ///< number of times that a panel was shown while none was on screen
    /// Conversation of the last answer; null before the first.
    std::shared_ptr<Conversation> conversation_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/VellumoCoordinator.h"

#include "capture/ContextTracking.h"
#include "capture/Conversation.h"
#include "capture/Demonstration.h"
#include "capture/SelectionReading.h"
#include "capture/TriggerManager.h"
#include "notes/NotesStoring.h"
#include "panel/ResultPanelControlling.h"
#include "pill/NotesEntranceControlling.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/ScreenLock.h"
#include "platform/Workspace.h"

#include <QCoreApplication>
#include <QPointer>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

VellumoCoordinator::VellumoCoordinator(const Collaborators &collaborators, QObject *parent)
    : QObject(parent)
    , with_(collaborators)
{
}

VellumoCoordinator::~VellumoCoordinator() = default;

QString VellumoCoordinator::text(const QString &english, const QString &chinese) const
{
    return with_.userPreferences.prefersEnglishTexts() ? english : chinese;
}

QList<ChatTurn> VellumoCoordinator::followUpTranscript() const
{
    return conversation_ ? conversation_->transcript : QList<ChatTurn>();
}

void VellumoCoordinator::start()
{
    observeFrontmostAppChanges();
    const QPointer<VellumoCoordinator> self(this);
    with_.resultPanelController.onFollowUp = [self](const QString &question) {
        if (self) {
            // The question belongs to the conversation that is shown now, even if another one
            // arrives before the task runs.
            QMetaObject::invokeMethod(
                self,
                [self, question, asked = self->conversation_] {
                    if (asked == self->conversation_) {
                        self->handleFollowUp(question);
                    }
                },
                Qt::QueuedConnection);
        }
    };
    with_.resultPanelController.onRetry = [self] {
        if (self) {
            QMetaObject::invokeMethod(
                self,
                [self] {
                    if (const auto retry = std::exchange(self->retry_, nullptr)) {
                        retry();
                    }
                },
                Qt::QueuedConnection);
        }
    };
    with_.triggerManager.onDoubleTapOption = [self] {
        if (self) {
            QMetaObject::invokeMethod(
                self, [self] { self->handleTrigger(); }, Qt::QueuedConnection);
        }
    };
    connect(&with_.notesStore, &NotesStoring::vellumoNotesDidChange, this,
            &VellumoCoordinator::updateNotesEntrance);
    with_.triggerManager.start();
    updateNotesEntrance();
}

void VellumoCoordinator::handleTrigger()
{
    if (with_.screenLock.isLocked() || with_.workspace.isScreenCovered()) {
        return;
    }
    with_.notesEntranceController.collapse();
    if (demoMode) {
        if (onDemoTrigger) {
            onDemoTrigger();
        }
        return;
    }
    // A double tap while the panel is shown only closes it; that toggle is deliberate.
    if (with_.resultPanelController.isOnScreen()) {
        with_.resultPanelController.dismiss();
        return;
    }
    const QString selection =
        with_.selectionReader.currentSelectedText().value_or(QString()).trimmed();
    if (selection.isEmpty()) {
        showEmptySelection();
        return;
    }
    if (selection.size() > maxSelectionLength) {
        showError(u"That is too long — select less."_s);
        return;
    }
    const Place place = findPlace();
    explain(selection, place);
}

VellumoCoordinator::Place VellumoCoordinator::findPlace()
{
    currentContext_ = with_.contextTracker.currentContext();
    auto place = std::make_shared<std::optional<ReadingContext>>(currentContext_);
    with_.contextTracker.refine(this, [this, place](const ReadingContext &context) {
        currentContext_ = context;
        *place = context;
        if (place == shownPlace_) {
            with_.resultPanelController.showContext(context);
            announceOpenNote();
        }
    });
    return place;
}

void VellumoCoordinator::present(const IslandContent &content, const Place &place,
                                 std::function<void()> onDismiss)
{
    beginPresentation(place);
    with_.resultPanelController.present(content, place ? *place : std::nullopt,
                                        std::move(onDismiss));
}

void VellumoCoordinator::showError(const QString &message, ErrorHelp help,
                                   const std::optional<ExplanationFailure> &failure)
{
    beginPresentation({});
    with_.resultPanelController.showError(message, help, failure);
}

void VellumoCoordinator::showNotice(const IslandContent &notice)
{
    present(notice, {}, {});
}

void VellumoCoordinator::beginPresentation(const Place &place)
{
    shownPlace_ = place;
    retry_ = nullptr;
    if (!with_.resultPanelController.isOnScreen()) {
        ++presentations_;
        with_.workspace.skipPastActivations();
    }
}

void VellumoCoordinator::explain(const QString &selection, const Place &place)
{
    present(IslandContent::loading(selection), place, {});
    const ExplanationRequest request{selection, with_.userPreferences.preferredOutputLanguage()};
    // The service may change before the answer arrives.
    const SampleAnswers samples = with_.aiService.samples();
    with_.aiService.explain(
        request, this,
        [this, selection, place,
         samples](const Result<ExplanationResult, ExplanationError> &answer) {
            if (answer.isOk()) {
                showExplanation(answer.value(), samples, selection, place);
            } else {
                showError(u"vellumo could not explain this yet."_s,
                          isMatterOfSettings(answer.error()) ? ErrorHelp::Service : ErrorHelp::None,
                          summary(answer.error(), with_.clock.secondsSinceReferenceDate()));
                retry_ = [this, selection, place] { explain(selection, place); };
            }
        });
}

void VellumoCoordinator::showExplanation(const ExplanationResult &result, SampleAnswers samples,
                                         const QString &selection, const Place &place)
{
    seedTranscript(selection, result);
    const ReadingNote note{QUuid::createUuid(),
                           selection,
                           result.translation,
                           result.explanation,
                           with_.clock.secondsSinceReferenceDate(),
                           {}};
    const QPointer<VellumoCoordinator> self(this);
    present(IslandContent::result(result, selection, {}, samples), place,
            [self, conversation = conversation_, note, place] {
                if (self) {
                    self->handleResultDismissed(*conversation, note, *place);
                }
            });
    openNote_ = note;
    announceOpenNote();
    if (onExplanationShown) {
        onExplanationShown();
    }
}

void VellumoCoordinator::showEmptySelection()
{
    if (with_.accessibility.isProcessTrusted()) {
        showError(u"Select text first."_s);
    } else {
        showError(u"vellumo needs Accessibility permission — enable it in System Settings → "
                  "Privacy & Security → Accessibility."_s,
                  ErrorHelp::Permission);
    }
}

void VellumoCoordinator::seedTranscript(const QString &selectedText,
                                        const ExplanationResult &result)
{
    QStringList parts = {result.translation, result.explanation};
    parts.removeIf([](const QString &part) { return part.trimmed().isEmpty(); });
    conversation_ = std::make_shared<Conversation>();
    conversation_->transcript = {
        {ChatTurn::Role::user, text(u"Selected text: "_s, u"选中的内容:"_s) + selectedText},
        {ChatTurn::Role::assistant, parts.join(u'\n')},
    };
}

void VellumoCoordinator::handleFollowUp(const QString &question)
{
    const std::shared_ptr<Conversation> conversation = conversation_;
    if (!conversation || conversation->isOver) {
        return;
    }
    conversation->transcript.append({ChatTurn::Role::user, question});
    with_.resultPanelController.showFollowUpThinking(question);
    retry_ = nullptr;
    answerFollowUp(conversation);
}

void VellumoCoordinator::answerFollowUp(const std::shared_ptr<Conversation> &conversation)
{
    with_.aiService.followUp(
        conversation->transcript, with_.userPreferences.preferredOutputLanguage(), this,
        [this, conversation](const Result<QString, ExplanationError> &answer) {
            if (conversation != conversation_ || conversation->isOver) {
                return;
            }
            if (answer.isOk()) {
                conversation->transcript.append({ChatTurn::Role::assistant, answer.value()});
                if (openNote_) {
                    openNote_->followUps = conversation->followUps();
                    announceOpenNote();
                }
                if (conversation->keepsLatest()) {
                    with_.resultPanelController.showFollowUpAnswer(answer.value());
                } else {
                    with_.resultPanelController.showUnkeptFollowUpAnswer(answer.value());
                }
            } else {
                with_.resultPanelController.showFollowUpFailure(
                    text(u"vellumo could not answer that just now."_s,
                         u"vellumo 暂时无法回答这个问题。"_s),
                    summary(answer.error(), with_.clock.secondsSinceReferenceDate()));
                retry_ = [this, conversation] { retryFollowUp(conversation); };
            }
        });
}

/// The question is the last turn, since its answer failed.
void VellumoCoordinator::retryFollowUp(const std::shared_ptr<Conversation> &conversation)
{
    if (conversation == conversation_ && !conversation->isOver) {
        with_.resultPanelController.showFollowUpRetry();
        answerFollowUp(conversation);
    }
}

QUuid VellumoCoordinator::closeOpenNote()
{
    const QUuid id = openNote_ ? openNote_->id : QUuid();
    with_.resultPanelController.dismiss();
    return with_.notesStore.find(id) ? id : QUuid();
}

void VellumoCoordinator::announceOpenNote()
{
    if (openNote_ && shownPlace_ && *shownPlace_) {
        Q_EMIT noteOpened({*openNote_, **shownPlace_});
    }
}

void VellumoCoordinator::closeNote(const QUuid &id)
{
    if (openNote_ && openNote_->id == id) {
        openNote_.reset();
    }
    Q_EMIT noteClosed(id);
}

void VellumoCoordinator::handleResultDismissed(Conversation &conversation, ReadingNote note,
                                               const std::optional<ReadingContext> &context)
{
    conversation.isOver = true;
    if (context) {
        note.createdAt = with_.clock.secondsSinceReferenceDate();
        note.followUps = conversation.followUps();
        with_.notesStore.add(note, *context);
        noteSaved(note);
    }
    closeNote(note.id);
    updateNotesEntrance();
}

void VellumoCoordinator::showNotesSummary()
{
    const QList<NoteWithContext> pairs = with_.notesStore.allNotesWithContexts();
    QList<ReadingNote> notes;
    notes.reserve(pairs.size());
    for (const NoteWithContext &pair : pairs) {
        notes.append(pair.note);
    }
    const QPointer<VellumoCoordinator> self(this);
    with_.notesEntranceController.showNotesList(notes, [self, pairs](const ReadingNote &chosen) {
        const auto pair = std::ranges::find(
            pairs, chosen.id, [](const NoteWithContext &candidate) { return candidate.note.id; });
        if (self && pair != pairs.end()) {
            self->reopenLatest(*pair);
        }
    });
}

void VellumoCoordinator::reopenNote(const QUuid &id)
{
    if (const auto pair = with_.notesStore.find(id)) {
        reopenLatest(*pair);
    }
}

void VellumoCoordinator::reopenLatest(const NoteWithContext &pair)
{
    // Save what is on screen first: it may be this note with new follow-ups.
    with_.resultPanelController.dismiss();
    if (with_.notesStore.isDeleted(pair.note.id)) {
        return;
    }
    const auto latest = with_.notesStore.find(pair.note.id);
    reopenNote(latest ? latest->note : pair.note, pair.context);
}

void VellumoCoordinator::reopenNote(const ReadingNote &note, const ReadingContext &context)
{
    const ExplanationResult result{note.translation, note.explanation};
    seedTranscript(note.sourceText, result);
    QList<ThreadItem> thread;
    for (const FollowUpExchange &exchange : note.followUps) {
        conversation_->transcript.append({ChatTurn::Role::user, exchange.question});
        conversation_->transcript.append({ChatTurn::Role::assistant, exchange.answer});
        thread.append({exchange.question, exchange.answer});
    }
    const QPointer<VellumoCoordinator> self(this);
    present(IslandContent::result(result, note.sourceText, thread),
            std::make_shared<std::optional<ReadingContext>>(context),
            [self, conversation = conversation_, note, context, baseline = note.followUps.size()] {
                if (self) {
                    self->handleReopenedNoteDismissed(*conversation, note, context, baseline);
                }
            });
    openNote_ = note;
}

void VellumoCoordinator::handleReopenedNoteDismissed(Conversation &conversation, ReadingNote note,
                                                     const ReadingContext &context,
                                                     qsizetype baselineFollowUps)
{
    conversation.isOver = true;
    const QList<FollowUpExchange> followUps = conversation.followUps();
    if (followUps.size() > baselineFollowUps) {
        // Another device may have extended or moved the note while it was open.
        const auto stored = with_.notesStore.find(note.id);
        note.followUps = stored && stored->note.followUps.size() > baselineFollowUps
            ? stored->note.followUps + followUps.sliced(baselineFollowUps)
            : followUps;
        with_.notesStore.update(note, stored ? stored->context : context);
        noteSaved(note);
    }
    closeNote(note.id);
    updateNotesEntrance();
}

void VellumoCoordinator::noteSaved(const ReadingNote &note)
{
    if (onNoteSaved) {
        onNoteSaved(note);
    }
}

void VellumoCoordinator::updateNotesEntrance()
{
    const QPointer<VellumoCoordinator> self(this);
    with_.notesEntranceController.show(static_cast<int>(with_.notesStore.noteCount()), [self] {
        if (self) {
            self->showNotesSummary();
        }
    });
}

void VellumoCoordinator::observeFrontmostAppChanges()
{
    connect(&with_.workspace, &Workspace::didActivateApplication, this,
            [this](qint64 processIdentifier) {
                if (processIdentifier == QCoreApplication::applicationPid()) {
                    return;
                }
                // A panel that is shown before the task runs is newer than the activation.
                QMetaObject::invokeMethod(
                    this,
                    [this, before = presentations_] {
                        if (before == presentations_) {
                            handleActiveContextChanged();
                        }
                    },
                    Qt::QueuedConnection);
            });
}

void VellumoCoordinator::handleActiveContextChanged()
{
    with_.resultPanelController.dismiss();
    static_cast<void>(findPlace());
    updateNotesEntrance();
}

void VellumoCoordinator::triggerDemo()
{
    present(IslandContent::demo(demonstrationAnswer(with_.userPreferences.prefersEnglishTexts())),
            {}, {});
    if (onExplanationShown) {
        onExplanationShown();
    }
}

void VellumoCoordinator::playNotesPillDemo(std::function<void()> completion)
{
    const QPointer<VellumoCoordinator> self(this);
    with_.notesEntranceController.playOnboardingDemo(
        demonstrationNote(with_.userPreferences.prefersEnglishTexts(),
                          with_.clock.secondsSinceReferenceDate()),
        [self, completion = std::move(completion)] {
            if (!self) {
                return;
            }
            self->updateNotesEntrance();
            if (completion) {
                completion();
            }
        });
}

} // namespace vellumo

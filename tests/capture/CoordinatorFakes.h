// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "capture/ContextTracking.h"
#include "capture/SelectionReading.h"
#include "explain/AIExplaining.h"
#include "panel/ResultPanelControlling.h"
#include "pill/NotesEntranceControlling.h"
#include "platform/ScreenLock.h"
#include "support/SampleNotes.h"

#include <QPointer>

namespace vellumo {

class FakeSelectionReader : public SelectionReading {
public:
    std::optional<QString> selection;
    int readings = 0;

    std::optional<QString> currentSelectedText() override
    {
        ++readings;
        return selection;
    }
};

class FakeContextTracker : public ContextTracking {
public:
    std::optional<ReadingContext> context;

    Refined refined; ///< of the last search

    std::optional<ReadingContext> currentContext() override
    {
        refined = nullptr;
        return context;
    }
    void refine(QObject *, Refined callback) override { refined = std::move(callback); }
};

/// Keeps requests until a test answers them.
class FakeExplainer : public AIExplaining {
public:
    struct Explanation {
        ExplanationRequest request;
        ExplanationCompletion<ExplanationResult> answer;
    };
    struct FollowUp {
        QList<ChatTurn> transcript;
        QString language;
        ExplanationCompletion<QString> answer;
    };
    QList<Explanation> explanations;
    QList<FollowUp> followUps;

    void explain(const ExplanationRequest &request, QObject *context,
                 ExplanationCompletion<ExplanationResult> completion) override
    {
        Q_UNUSED(context)
        explanations.append({request, std::move(completion)});
    }
    void followUp(const QList<ChatTurn> &transcript, const QString &language, QObject *context,
                  ExplanationCompletion<QString> completion) override
    {
        Q_UNUSED(context)
        followUps.append({transcript, language, std::move(completion)});
    }
};

/// Behaves towards the coordinator as the real panel does. Shows nothing.
class FakeResultPanel : public ResultPanelControlling {
public:
    std::optional<IslandContent> shown; ///< absent while no panel is on screen
    std::optional<ReadingContext> context;
    QString error; ///< of the last showError()
    ErrorHelp help = ErrorHelp::None; ///< likewise
    std::optional<ExplanationFailure> reason; ///< of the last failure
    QStringList thread; ///< the arguments of the follow-up operations

    bool isOnScreen() const override { return shown.has_value(); }
    void present(IslandContent content, std::optional<ReadingContext> newContext,
                 std::function<void()> onDismiss) override
    {
        dismiss();
        shown = std::move(content);
        context = std::move(newContext);
        onDismiss_ = std::move(onDismiss);
    }
    void dismiss() override
    {
        if (!shown) {
            return;
        }
        shown.reset();
        if (const auto callback = std::exchange(onDismiss_, {})) {
            callback();
        }
    }
    void showError(const QString &message, ErrorHelp errorHelp,
                   const std::optional<ExplanationFailure> &failure) override
    {
        reason = failure;
        error = message;
        help = errorHelp;
        present(IslandContent::error(message, help), std::nullopt, [] {});
    }
    void showContext(const ReadingContext &newContext) override { context = newContext; }
    void showFollowUpThinking(const QString &question) override { thread.append(question); }
    void showFollowUpAnswer(const QString &answer) override { thread.append(answer); }
    void showUnkeptFollowUpAnswer(const QString &answer) override
    {
        thread.append(QStringLiteral("unkept: ") + answer);
    }
    void showFollowUpFailure(const QString &message, const ExplanationFailure &failure) override
    {
        reason = failure;
        thread.append(QStringLiteral("failed: ") + message);
    }

    void showFollowUpRetry() override { thread.append(QStringLiteral("again")); }

private:
    std::function<void()> onDismiss_;
};

class FakeScreenLock : public ScreenLock {
public:
    bool locked = false;

    bool isLocked() const override { return locked; }
};

class FakeNotesEntrance : public NotesEntranceControlling {
public:
    int count = -1;
    int collapses = 0;
    std::function<void()> onOpen;
    QList<ReadingNote> listed;
    std::function<void(const ReadingNote &)> onSelectNote;
    std::optional<ReadingNote> sample;
    std::function<void()> demoCompletion;

    void show(int newCount, std::function<void()> open) override
    {
        count = newCount;
        onOpen = std::move(open);
    }
    void setHighlighted(bool) override { }
    void showNotesList(const QList<ReadingNote> &notes,
                       std::function<void(const ReadingNote &)> select) override
    {
        listed = notes;
        onSelectNote = std::move(select);
    }
    void collapse() override { ++collapses; }
    void playOnboardingDemo(const ReadingNote &note, std::function<void()> completion) override
    {
        sample = note;
        demoCompletion = std::move(completion);
    }
    void endOnboardingDemo() override { }
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "panel/IslandContent.h"
#include <functional>
#include <optional>

namespace vellumo {

/// The panel at the top of the screen, for the coordinator. Main thread only.
class ResultPanelControlling {
public:
    virtual ~ResultPanelControlling() = default;

    [[nodiscard]] virtual bool isOnScreen() const = 0;

    /// Called with each follow-up question that the user submits.
    std::function<void(const QString &question)> onFollowUp;

    /// Called when the user asks for a failed explanation or follow-up again.
    std::function<void()> onRetry;

    /// Dismisses what is shown, running its callback, and shows `content`. `onDismiss` runs once,
    /// after this content was dismissed.
    virtual void present(IslandContent content, std::optional<ReadingContext> context,
                         std::function<void()> onDismiss) = 0;

    /// Closes the panel, if any, and runs the stored dismiss callback.
    virtual void dismiss() = 0;

    /// Presents a message without source text, context or thread, and offers `help`. With a
    /// failure it names the reason and offers another try.
    virtual void showError(const QString &message, ErrorHelp help,
                           const std::optional<ExplanationFailure> &failure) = 0;

    /// Changes the place in the header only. Does nothing while hidden.
    virtual void showContext(const ReadingContext &context) = 0;

    /// Appends a row with a pending answer. Does nothing unless a result is shown.
    virtual void showFollowUpThinking(const QString &question) = 0;

    /// Fills the last row. Does nothing unless a result with a thread is shown.
    virtual void showFollowUpAnswer(const QString &answer) = 0;

    /// As showFollowUpAnswer(), and marks the row as not saved with the note.
    virtual void showUnkeptFollowUpAnswer(const QString &answer) = 0;

    /// Fills the last row with an error message, names the reason and offers another try.
    virtual void showFollowUpFailure(const QString &message, const ExplanationFailure &failure) = 0;

    /// Makes the last row pending again. Does nothing unless its answer failed.
    virtual void showFollowUpRetry() = 0;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "panel/IslandContent.h"
#include <functional>
#include <optional>

namespace vellumo {

/// The top-of-screen panel as the coordinator sees it. Main thread only.
class ResultPanelControlling {
public:
    virtual ~ResultPanelControlling() = default;

    [[nodiscard]] virtual bool isOnScreen() const = 0;

    /// Receives each follow-up question that the user submits.
    std::function<void(const QString &question)> onFollowUp;

    /// Dismisses what is shown, running its callback, and shows `content` instead. `onDismiss`
    /// runs once, after the panel has left the screen.
    virtual void present(IslandContent content, std::optional<ReadingContext> context,
                         std::function<void()> onDismiss) = 0;

    /// Closes the panel, if any, and runs the stored dismiss callback.
    virtual void dismiss() = 0;

    /// Presents a message without source text, context or thread, and what may help beside it.
    virtual void showError(const QString &message, ErrorHelp help) = 0;

    /// Names the place of what is shown otherwise; everything else stays. Nothing while hidden.
    virtual void showContext(const ReadingContext &context) = 0;

    /// Appends a row whose answer is awaited. Only while a result is shown.
    virtual void showFollowUpThinking(const QString &question) = 0;

    /// Fills the last row. Only while a result with a thread is shown.
    virtual void showFollowUpAnswer(const QString &answer) = 0;

    /// The same, and marks the row as one that the note will not have.
    virtual void showUnkeptFollowUpAnswer(const QString &answer) = 0;

    /// Fills the last row with an apology and marks the row as failed.
    virtual void showFollowUpFailure(const QString &message) = 0;
};

} // namespace vellumo

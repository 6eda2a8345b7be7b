// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include "notes/ReadingNote.h"
#include <QList>

namespace vellumo {

/// The transcript of one panel. A dismissed panel saves its own conversation, which need not be the
/// latest: the next one is created before the old panel closes.
struct Conversation {
    QList<ChatTurn> transcript;
    bool isOver = false; ///< its panel is closed; later answers are dropped

    /// Returns the answered follow-ups. Pairs are at fixed positions after the two seed turns, so
    /// that an unanswered question excludes everything after it.
    [[nodiscard]] QList<FollowUpExchange> followUps() const;

    /// Returns whether followUps() includes the follow-up that was answered last.
    [[nodiscard]] bool keepsLatest() const;

private:
    /// Returns whether a question with its answer is at this position.
    [[nodiscard]] bool isPair(qsizetype position) const;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include "notes/ReadingNote.h"
#include <QList>

namespace vellumo {

/// Each dismissal saves from the conversation that was on screen, which need not be the latest: the
/// next one is seeded before the old panel goes.
struct Conversation {
    QList<ChatTurn> transcript;
    bool isOver = false; ///< its panel is gone; answers that come now belong nowhere

    /// The answered follow-ups. They are taken in pairs at fixed positions after the two seed
    /// turns, so an unanswered question shifts whatever follows it out of the pairing.
    [[nodiscard]] QList<FollowUpExchange> followUps() const;

    /// Whether the follow-up that was answered last is one of them.
    [[nodiscard]] bool keepsLatest() const;

private:
    /// Whether a question and its answer begin at this position.
    [[nodiscard]] bool isPair(qsizetype position) const;
};

} // namespace vellumo

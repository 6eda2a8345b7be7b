// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

enum class SelectedTextKind : quint8 {
    word, ///< a word, term or short phrase
    sentence, ///< a single short sentence
    paragraph, ///< several lines, or more than 180 characters
};

/// A selection to be explained.
struct ExplanationRequest {
    QString text;
    QString language; ///< the output language as the preference spells it, such as "English"

    /// Computed afresh on every call. Looks only at the beginning of a long text.
    [[nodiscard]] SelectedTextKind kind() const;
};

struct ExplanationResult {
    QString translation; ///< empty when the selection is in the output language already
    QString explanation;
    friend bool operator==(const ExplanationResult &, const ExplanationResult &) = default;
};

/// One turn of a conversation about a selection. A transcript is a list of turns, oldest first.
struct ChatTurn {
    enum class Role : quint8 { user, assistant };
    Role role = Role::user;
    QString text;
    friend bool operator==(const ChatTurn &, const ChatTurn &) = default;
};

} // namespace vellumo

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

    /// Returns the kind of the text. Computed at each call; examines only the beginning of a long
    /// text.
    [[nodiscard]] SelectedTextKind kind() const;
};

struct ExplanationResult {
    QString translation; ///< empty when the selection is already in the output language
    QString explanation;
    friend bool operator==(const ExplanationResult &, const ExplanationResult &) = default;
};

/// Whether answers are built-in samples, and why.
enum class SampleAnswers : quint8 {
    None, ///< a service answers
    Unconfigured, ///< there is no service, or the user prefers samples
    Misconfigured, ///< the configuration of the service has a mistake
};

/// One turn of a conversation about a selection. A transcript is a list of turns, oldest first.
struct ChatTurn {
    enum class Role : quint8 { user, assistant };
    Role role = Role::user;
    QString text;
    friend bool operator==(const ChatTurn &, const ChatTurn &) = default;
};

} // namespace vellumo

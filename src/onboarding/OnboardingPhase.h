// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtGlobal>
#include <optional>

namespace vellumo {

/// The cards of the first run. The values are fixed.
enum class Phase : quint8 {
    signIn = 0,
    privacy = 1,
    permission = 2,
    keyTest = 3,
    selectTest = 4,
    notesIntro = 5,
    hearAbout = 6,
    role = 7,
    industry = 8,
};

inline constexpr int phaseCount = 9;

/// What the order of the cards depends on.
struct FirstRunState {
    bool isTrusted = false; ///< other applications can be read already
    bool isSignedIn = false;
};

/// Returns whether the card asks about the user.
[[nodiscard]] constexpr bool isQuestion(Phase phase)
{
    return phase >= Phase::hearAbout;
}

/// The card that is asked for by name, such as "keytest"; absent for any other text.
[[nodiscard]] std::optional<Phase> phaseNamed(const QString &name);

/// The card that follows; absent after the last.
[[nodiscard]] std::optional<Phase> phaseAfter(Phase phase, const FirstRunState &state);

/// The card that a step back leads to; absent where there is none.
[[nodiscard]] std::optional<Phase> phaseBefore(Phase phase, const FirstRunState &state);

} // namespace vellumo

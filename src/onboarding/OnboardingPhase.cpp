// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "onboarding/OnboardingPhase.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace vellumo {

std::optional<Phase> phaseNamed(const QString &name)
{
    static const QHash<QString, Phase> names{
        {u"signin"_s, Phase::signIn},
        {u"privacy"_s, Phase::privacy},
        {u"accessibility"_s, Phase::permission},
        {u"permission"_s, Phase::permission},
        {u"gesture"_s, Phase::keyTest},
        {u"keytest"_s, Phase::keyTest},
        {u"select"_s, Phase::selectTest},
        {u"notes"_s, Phase::notesIntro},
        {u"hearabout"_s, Phase::hearAbout},
        {u"role"_s, Phase::role},
        {u"industry"_s, Phase::industry},
    };
    const auto found = names.constFind(name);
    return found != names.constEnd() ? std::optional(*found) : std::nullopt;
}

std::optional<Phase> phaseAfter(Phase phase, const FirstRunState &state)
{
    switch (phase) {
    case Phase::signIn:
        return Phase::privacy;
    case Phase::privacy:
        return state.isTrusted ? Phase::keyTest : Phase::permission;
    case Phase::permission:
        return Phase::keyTest;
    case Phase::keyTest:
        return Phase::selectTest;
    case Phase::selectTest:
        return Phase::notesIntro;
    case Phase::notesIntro:
        // without an account the answers would go nowhere
        return state.isSignedIn ? std::optional(Phase::hearAbout) : std::nullopt;
    case Phase::hearAbout:
        return Phase::role;
    case Phase::role:
        return Phase::industry;
    case Phase::industry:
        break;
    }
    return std::nullopt;
}

std::optional<Phase> phaseBefore(Phase phase, const FirstRunState &state)
{
    switch (phase) {
    case Phase::signIn:
        break;
    case Phase::privacy:
        return state.isSignedIn ? std::nullopt : std::optional(Phase::signIn);
    case Phase::permission:
        return Phase::privacy;
    case Phase::keyTest:
        return state.isTrusted ? Phase::privacy : Phase::permission;
    case Phase::selectTest:
        return Phase::keyTest;
    case Phase::notesIntro:
        return Phase::selectTest;
    case Phase::hearAbout:
        return Phase::notesIntro;
    case Phase::role:
        return Phase::hearAbout;
    case Phase::industry:
        return Phase::role;
    }
    return std::nullopt;
}

} // namespace vellumo

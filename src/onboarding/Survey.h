// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "onboarding/OnboardingPhase.h"
#include <QList>
#include <QString>

namespace vellumo {

/// One answer. The English label is also what is kept of it.
struct SurveyOption {
    QString icon;
    QString chinese;
    QString english;
};

/// The question of one card, with the answers to choose from.
struct Survey {
    QString english;
    QString chinese;
    int columns = 0;
    QList<SurveyOption> options;
};

/// Null for a card that asks nothing.
[[nodiscard]] const Survey *surveyOf(Phase phase);

/// The drawing behind an icon's name: a file of the program's resources. "brand:" names the mark of
/// a service; one that cannot be loaded is a globe.
[[nodiscard]] QString surveyIconFile(const QString &icon);

} // namespace vellumo

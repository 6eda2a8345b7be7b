// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include "notes/ReadingNote.h"
#include <QList>

namespace vellumo {

/// A sample selection, place and answer for screenshots.
struct SampleReading {
    ReadingContext context;
    QString selection;
    ExplanationResult result;
    FollowUpExchange followUp;
    QList<ReadingNote> notes;
};

[[nodiscard]] SampleReading sampleReading(bool english);

} // namespace vellumo

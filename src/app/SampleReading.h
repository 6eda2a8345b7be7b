// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include "notes/ReadingNote.h"
#include <QList>

namespace vellumo {

/// What somebody might have read, for pictures of the program.
struct SampleReading {
    ReadingContext context;
    QString selection;
    ExplanationResult result;
    FollowUpExchange followUp;
    QList<ReadingNote> notes;
};

[[nodiscard]] SampleReading sampleReading(bool english);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include "notes/ReadingNote.h"

namespace vellumo {

/// Returns the answer that the first run shows in the panel.
[[nodiscard]] ExplanationResult demonstrationAnswer(bool english);

/// Returns the note that the first run shows in the pill's list; it is never stored.
[[nodiscard]] ReadingNote demonstrationNote(bool english, double createdAt);

} // namespace vellumo

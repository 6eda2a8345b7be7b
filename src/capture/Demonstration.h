// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationTypes.h"
#include "notes/ReadingNote.h"

namespace vellumo {

/// What the first run shows in the panel in place of a real answer.
[[nodiscard]] ExplanationResult demonstrationAnswer(bool english);

/// The note that the first run shows in the pill's list; it is never stored.
[[nodiscard]] ReadingNote demonstrationNote(bool english, double createdAt);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"

namespace vellumo {

/// Where a note was read, in a few plain words: the site, the file or the window.
[[nodiscard]] QString placeOf(const ReadingContext &context, bool english);

/// Notes of one such name belong together where places are counted.
[[nodiscard]] QString placeKey(const ReadingContext &context);

} // namespace vellumo

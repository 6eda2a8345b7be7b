// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"

namespace vellumo {

/// Where a note was read, in a few plain words: the site, the file or the window.
[[nodiscard]] QString placeOf(const ReadingContext &context, bool english);

/// Whether notes came from another computer, whose context is not known here.
[[nodiscard]] bool isPulled(const ReadingContext &context);

/// Notes of one such name belong together where places are counted; for a hash.
[[nodiscard]] QString placeKey(const ReadingContext &context);
/// Whether two have the same placeKey().
[[nodiscard]] bool isSamePlace(const ReadingContext &one, const ReadingContext &other);

} // namespace vellumo

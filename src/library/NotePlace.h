// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"

namespace vellumo {

/// Returns the display name of the place where a note was read: the site, the file or the window.
[[nodiscard]] QString placeOf(const ReadingContext &context, bool english);

/// Returns whether the notes were synced from another computer, so that their context is unknown.
[[nodiscard]] bool isPulled(const ReadingContext &context);

/// Returns the hash key under which places are counted. It is equal for contexts of one name.
[[nodiscard]] QString placeKey(const ReadingContext &context);
/// Returns whether both contexts have the same placeKey(), without composing it.
[[nodiscard]] bool isSamePlace(const ReadingContext &one, const ReadingContext &other);

} // namespace vellumo

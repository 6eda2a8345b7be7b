// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QUrl>

namespace vellumo {

/// Where a note was read, in a few plain words: the site, the file or the window.
[[nodiscard]] QString placeOf(const ReadingContext &context, bool english);

/// The page that can be opened again; empty for other places.
[[nodiscard]] QUrl pageOf(const ReadingContext &context);

/// Notes of one such name belong together where places are counted.
[[nodiscard]] QString placeKey(const ReadingContext &context);

} // namespace vellumo

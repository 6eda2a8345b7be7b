// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QUrl>

namespace vellumo {

/// Returns the address of a page that can be opened again; empty for other places.
[[nodiscard]] QUrl pageOf(const ReadingContext &context);

/// Returns the display name of a place, that of a page without "www.".
[[nodiscard]] QString shortNameOf(const ReadingContext &context);

} // namespace vellumo

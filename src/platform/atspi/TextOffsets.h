// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/TextRanges.h"
#include <QList>
#include <QString>

namespace vellumo {

/// The placeholder in a text for an embedded object.
inline constexpr char16_t objectReplacement = u'\uFFFC';

struct ObjectOffsets {
    QList<int> offsets; ///< of each U+FFFC
    int length = 0; ///< of the whole text
};

/// In code points.
[[nodiscard]] ObjectOffsets objectOffsets(const QString &text);

/// Whether wrong offsets can be taken at their word: up to the first astral character they are
/// right, behind it they come out too small, or as an empty range.
[[nodiscard]] bool isBeforeAstral(const OffsetRange &range, const QString &text);

} // namespace vellumo

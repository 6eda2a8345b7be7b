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
    QList<int> offsets; ///< offset of each U+FFFC
    int length = 0; ///< of the whole text
};

/// Offsets in code points.
[[nodiscard]] ObjectOffsets objectOffsets(const QString &text);

/// Returns whether the text has no character beyond the BMP, or the range ends before the first
/// one. Up to there Chromium's offsets are right; after it they are too small, or the range is
/// empty.
[[nodiscard]] bool isBeforeAstral(const OffsetRange &range, const QString &text);

} // namespace vellumo

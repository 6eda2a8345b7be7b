// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/TextRanges.h"
#include <QString>
#include <optional>

namespace vellumo {

/// Reliability of an application's offsets.
enum class OffsetQuality : quint8 {
    Exact,
    WrongAfterAstral, ///< Chromium's selections, in texts with characters beyond U+FFFF
};

/// Returns the text of selected ranges including embedded objects. In web pages a text has U+FFFC
/// for each paragraph, link or list item, which is an object with its own text and may be partly
/// selected. Blocks are separated by line breaks; placeholders are removed. A text of more than
/// maxSelectionLength characters is truncated, but stays longer than that. Absent when the question
/// was aborted or the text is uncertain.
[[nodiscard]] std::optional<QString> embeddedText(const ObjectReference &object,
                                                  const QList<OffsetRange> &ranges,
                                                  OffsetQuality offsets, AtspiQuestion &question);

} // namespace vellumo

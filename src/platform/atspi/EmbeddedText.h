// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/TextRanges.h"
#include <QString>
#include <optional>

namespace vellumo {

/// What an application's offsets are worth.
enum class OffsetQuality : quint8 {
    Exact,
    WrongAfterAstral, ///< Chromium's selections, in texts with characters beyond U+FFFF
};

/// The text of selected ranges with everything embedded in them. In web pages a text holds U+FFFC
/// for each paragraph, link or list item in it, which is an object with a text of its own and may
/// itself be selected in part. Blocks are separated by line breaks; fillers are removed.
/// A text of more than maxSelectionLength characters comes back cut, but longer than that.
/// Absent when the question was aborted or the text is uncertain.
[[nodiscard]] std::optional<QString> embeddedText(const ObjectReference &object,
                                                  const QList<OffsetRange> &ranges,
                                                  OffsetQuality offsets, AtspiQuestion &question);

} // namespace vellumo

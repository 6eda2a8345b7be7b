// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Prepares foreign text for a view: line breaks become "\n", control characters and placeholders
/// of embedded objects are removed, and more than `limit` UTF-16 units are truncated at a character
/// boundary with "…". The time depends on `limit`, not on the text's length.
[[nodiscard]] QString presentableText(const QString &text, qsizetype limit);

/// As presentableText(), with each run of white space replaced by one space.
[[nodiscard]] QString presentableLine(const QString &text, qsizetype limit);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Text from outside made fit for a view: line ends become "\n", control characters and the
/// fillers of embedded objects go, and more than `limit` UTF-16 units are cut at a character
/// boundary and end in "…". Takes time for at most about `limit` units.
[[nodiscard]] QString presentableText(const QString &text, qsizetype limit);

/// As presentableText(), with every run of white space turned into one space.
[[nodiscard]] QString presentableLine(const QString &text, qsizetype limit);

} // namespace vellumo

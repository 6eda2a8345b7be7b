// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace vellumo {

/// Returns whether the text has more than `limit` grapheme clusters. Examines only as much of the
/// text as necessary.
[[nodiscard]] bool hasMoreGraphemesThan(QStringView text, int limit);

} // namespace vellumo

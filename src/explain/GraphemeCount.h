// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

namespace vellumo {

/// Whether the text has more than `limit` grapheme clusters. Looks only at as much of the text as
/// the answer needs.
[[nodiscard]] bool hasMoreGraphemesThan(QStringView text, int limit);

} // namespace vellumo

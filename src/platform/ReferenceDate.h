// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace vellumo {

/// 2001-01-01 00:00:00 UTC, which times are counted from here, in seconds since 1970.
inline constexpr double referenceDate = 978307200;

/// In the user's time zone. Any number has an answer: what is beyond year 9999 stays at its end.
[[nodiscard]] QDateTime localTime(double secondsSinceReferenceDate);

} // namespace vellumo

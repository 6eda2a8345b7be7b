// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace vellumo {

/// 2001-01-01 00:00:00 UTC in seconds since 1970. Times are counted from there.
inline constexpr double referenceDate = 978307200;

/// Returns the time in the user's time zone. Values beyond the year 9999 are clamped to its end.
[[nodiscard]] QDateTime localTime(double secondsSinceReferenceDate);

} // namespace vellumo

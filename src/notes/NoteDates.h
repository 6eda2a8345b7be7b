// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ReferenceDate.h"
#include <QString>

/// Formats days and times of notes, in the user's time zone, as short plain text.
namespace vellumo::NoteDates {

using vellumo::localTime;

/// "Today", "Yesterday", "Friday, 20 November", with the year when it is another one.
[[nodiscard]] QString day(QDate date, QDate today, bool english);

/// "Friday, 20 November 2026", for any day.
[[nodiscard]] QString fullDate(QDate date, bool english);

/// "18:42" for today, then "Yesterday", "20 November", with the year when it is another one.
[[nodiscard]] QString moment(const QDateTime &time, QDate today, bool english);

/// Returns both the day and the time.
[[nodiscard]] QString full(const QDateTime &time, QDate today, bool english);

[[nodiscard]] QString clockTime(const QDateTime &time);

/// "October".
[[nodiscard]] QString month(QDate date, bool english);

/// "Oct" or "10月".
[[nodiscard]] QString shortMonth(QDate date, bool english);

/// "October 2026".
[[nodiscard]] QString monthAndYear(QDate date, bool english);

/// Returns the instant at which the day begins, in seconds since the reference date.
[[nodiscard]] double startOf(QDate date);

} // namespace vellumo::NoteDates

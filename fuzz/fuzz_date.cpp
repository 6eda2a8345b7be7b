// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Instants as services write them, and days and times of any note.

#include "Fuzzing.h"
#include "notes/NoteDates.h"
#include "sync/InternetDateTime.h"
#include <QDateTime>
#include <cmath>
#include <cstring>

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (const auto instant = internetDateTime(text(data, size))) {
        require(std::isfinite(*instant), "an instant is a number");
    }
    double seconds = 0;
    std::memcpy(&seconds, data, std::min(size, sizeof seconds));
    const QDateTime time = NoteDates::localTime(seconds);
    const QDate today(2026, 11, 22);
    for (const bool english : {true, false}) {
        static_cast<void>(NoteDates::full(time, today, english));
        static_cast<void>(NoteDates::moment(time, today, english));
        static_cast<void>(NoteDates::monthAndYear(time.date(), english));
    }
    return 0;
}

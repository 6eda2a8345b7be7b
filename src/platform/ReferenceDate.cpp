// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/ReferenceDate.h"

#include <algorithm>
#include <cmath>

namespace vellumo {

QDateTime localTime(double secondsSinceReferenceDate)
{
    constexpr double furthest = 253402300799.0 - referenceDate; // the end of the year 9999
    // a damaged file or a server may contain any number
    const double seconds = std::isfinite(secondsSinceReferenceDate)
        ? std::clamp(secondsSinceReferenceDate, -furthest, furthest)
        : 0;
    return QDateTime::fromMSecsSinceEpoch(
        static_cast<qint64>(std::floor((seconds + referenceDate) * 1000)));
}

} // namespace vellumo

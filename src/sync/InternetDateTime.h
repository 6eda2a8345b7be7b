// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>
#include <optional>

namespace vellumo {

/// The instant that a text such as 2026-03-17T10:20:30.123Z names, in seconds since 2001-01-01
/// 00:00:00 UTC. The fraction must be there, with one to nine digits; the zone is Z or an offset
/// such as +08:00. Anything else, also a day that no calendar has, is no instant.
[[nodiscard]] std::optional<double> internetDateTime(QStringView text);

} // namespace vellumo

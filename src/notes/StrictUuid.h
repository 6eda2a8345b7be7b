// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QUuid>
#include <optional>
#include <string_view>

namespace vellumo {

/// Parses an id of exactly 36 characters (8-4-4-4-12 hexadecimal digits, either case). QUuid's own
/// parser also takes braces and trailing text.
[[nodiscard]] std::optional<QUuid> strictUuid(std::string_view text);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace vellumo::CommandLine {

/// Acts on the program's arguments, before there is an application object and without a display.
/// Answers the exit status when there is nothing more to do.
[[nodiscard]] std::optional<int> handle(int argc, char **argv);

} // namespace vellumo::CommandLine

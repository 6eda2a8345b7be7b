// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Prints the report of a session in which vellumo does not run, and runs the event loop for it.
/// Needs the application object. Returns the exit status.
[[nodiscard]] int printSessionReport();

} // namespace vellumo

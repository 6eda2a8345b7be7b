// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace vellumo {

/// Whether the session bus, if there is one, speaks to those who connect. A bus daemon that is
/// stopped or hangs takes connections all the same, and every D-Bus library then waits for half a
/// minute, Qt's in the main thread. An address of an uncommon form counts as answering.
[[nodiscard]] bool isSessionBusResponsive(std::chrono::milliseconds patience);

} // namespace vellumo

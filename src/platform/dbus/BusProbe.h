// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace vellumo {

/// Returns whether the session bus, if there is one, answers a new connection in time. A bus daemon
/// that is stopped or hung still accepts connections, and D-Bus libraries then wait for half a
/// minute, Qt's on the main thread. Blocks until the timeout. True without a bus and for an address
/// of an uncommon form.
[[nodiscard]] bool isSessionBusResponsive(std::chrono::milliseconds timeout);

} // namespace vellumo

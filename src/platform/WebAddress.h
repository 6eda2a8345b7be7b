// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <optional>

namespace vellumo {

/// Scheme, host and port.
[[nodiscard]] QString originOf(const QUrl &url);

/// Whether the address leads to this very machine by its own word.
[[nodiscard]] bool isLoopback(const QUrl &url);

/// Whether the host is an address of a private network, by number.
[[nodiscard]] bool isPrivateAddress(const QString &host);

/// Why nothing may be sent to this address; absent when something may. What is sent may be secret,
/// so it goes encrypted, or no further than this machine and addresses of private networks.
[[nodiscard]] std::optional<HttpError> refusalOf(const QUrl &url);

} // namespace vellumo

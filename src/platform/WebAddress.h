// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <optional>

namespace vellumo {

/// Returns scheme, host and port.
[[nodiscard]] QString originOf(const QUrl &url);

/// Returns whether the host is localhost or a loopback address.
[[nodiscard]] bool isLoopback(const QUrl &url);

/// Returns whether the host is a numeric address of a private network.
[[nodiscard]] bool isPrivateAddress(const QString &host);

/// Returns why nothing may be sent to this address; absent when it is allowed. What is sent may be
/// secret, so it must be encrypted or stay on this machine and private networks.
[[nodiscard]] std::optional<HttpError> refusalOf(const QUrl &url);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <optional>

namespace vellumo {

/// Why nothing may be sent to this address; absent when something may. What is sent may be secret,
/// so it goes encrypted, or no further than this machine and addresses of private networks.
[[nodiscard]] std::optional<HttpError> refusalOf(const QUrl &url);

/// The same for a request as a whole: its address and its headers.
[[nodiscard]] std::optional<HttpError> refusalOf(const HttpRequest &request);

} // namespace vellumo

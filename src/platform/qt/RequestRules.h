// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/WebAddress.h"
#include <optional>

namespace vellumo {

/// Why the request as a whole, its address and its headers, may not be sent.
[[nodiscard]] std::optional<HttpError> refusalOf(const HttpRequest &request);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/WebAddress.h"
#include <optional>

namespace vellumo {

/// Returns why the request may not be sent, by its address and headers; absent when it may.
[[nodiscard]] std::optional<HttpError> refusalOf(const HttpRequest &request);

} // namespace vellumo

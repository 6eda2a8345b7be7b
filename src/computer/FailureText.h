// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "settings/ConfigurationFault.h"

namespace vellumo {

class BilingualText;

/// Describes a failed explanation and what the user can do about it.
[[nodiscard]] QString failureText(const ExplanationFailure &failure, const BilingualText &texts);

/// Describes a mistake in the configuration and where to correct it.
[[nodiscard]] QString faultText(const ConfigurationFault &fault, const BilingualText &texts);

} // namespace vellumo

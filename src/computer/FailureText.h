// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "settings/ConfigurationFault.h"

namespace vellumo {

class BilingualText;

/// What went wrong with an explanation and what to do about it, in plain words.
[[nodiscard]] QString failureText(const ExplanationFailure &failure, const BilingualText &texts);

/// What is wrong with the configuration and where to put it right, in plain words.
[[nodiscard]] QString faultText(const ConfigurationFault &fault, const BilingualText &texts);

} // namespace vellumo

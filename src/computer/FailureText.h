// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"

namespace vellumo {

class BilingualText;

/// What went wrong with an explanation and what to do about it, in plain words.
[[nodiscard]] QString failureText(const ExplanationFailure &failure, const BilingualText &texts);

} // namespace vellumo

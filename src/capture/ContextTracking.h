// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <optional>

namespace vellumo {

/// Answers where the user is reading at this moment. Main thread only; may block it briefly.
class ContextTracking {
public:
    virtual ~ContextTracking() = default;

    /// Absent only while no application is in front.
    [[nodiscard]] virtual std::optional<ReadingContext> currentContext() = 0;
};

} // namespace vellumo

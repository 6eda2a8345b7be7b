// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <functional>
#include <optional>

class QObject;

namespace vellumo {

/// Determines where the user is reading. Main thread only; may block it briefly.
class ContextTracking {
public:
    virtual ~ContextTracking() = default;

    /// Returns the current place; absent only while no application is in front.
    [[nodiscard]] virtual std::optional<ReadingContext> currentContext() = 0;

    using Refined = std::function<void(const ReadingContext &context)>;

    /// Continues to query the place of the last currentContext() for some seconds, since a starting
    /// application or browser may not have its title or address yet. `refined` runs from the event
    /// loop with each better result. It is not called after `receiver` is destroyed, the user reads
    /// elsewhere, or currentContext() is called again.
    virtual void refine(QObject *receiver, Refined refined) = 0;
};

} // namespace vellumo

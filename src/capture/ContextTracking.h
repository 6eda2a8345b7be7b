// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <functional>
#include <optional>

class QObject;

namespace vellumo {

/// Answers where the user is reading at this moment. Main thread only; may block it briefly.
class ContextTracking {
public:
    virtual ~ContextTracking() = default;

    /// Absent only while no application is in front.
    [[nodiscard]] virtual std::optional<ReadingContext> currentContext() = 0;

    using Refined = std::function<void(const ReadingContext &context)>;

    /// Goes on asking for some seconds, while the place that currentContext() has just answered may
    /// get a more exact name: an application that has only started, a browser that gave no address
    /// yet. `refined` runs with each better answer, from the event loop. It stays away once
    /// `receiver` is gone, the user reads elsewhere, or currentContext() is called again.
    virtual void refine(QObject *receiver, Refined refined) = 0;
};

} // namespace vellumo

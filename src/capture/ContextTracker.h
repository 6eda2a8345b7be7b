// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "capture/BrowserContextResolver.h"
#include "capture/ContextTracking.h"

namespace vellumo {

class Accessibility;
class ReadingBudget;
class Workspace;

/// Names the place of reading: the page in a browser, else the window, else the application.
class ContextTracker : public ContextTracking {
public:
    /// All must outlive this object. The budget is the selection reader's.
    ContextTracker(Workspace &workspace, Accessibility &accessibility, const ReadingBudget &budget);

    [[nodiscard]] std::optional<ReadingContext> currentContext() override;

private:
    /// Absent without the user's trust.
    [[nodiscard]] std::optional<QString> focusedWindowTitle(qint64 processIdentifier);

    Workspace &workspace_;
    Accessibility &accessibility_;
    const ReadingBudget &budget_;
    BrowserContextResolver browserContextResolver_;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

namespace vellumo {

/// Answers what text the user has selected in the application in front. Main thread only; may block
/// it for a bounded time.
class SelectionReading {
public:
    virtual ~SelectionReading() = default;

    /// Absent when nothing is selected or nothing could be read. Not trimmed. A text of more than
    /// maxSelectionLength characters may be cut, but is then still longer than that.
    [[nodiscard]] virtual std::optional<QString> currentSelectedText() = 0;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

namespace vellumo {

/// Reads the text that is selected in the application in front. Main thread only; may block it for
/// a bounded time.
class SelectionReading {
public:
    virtual ~SelectionReading() = default;

    /// Returns the selected text, not trimmed; absent when nothing is selected or nothing could be
    /// read. A text of more than maxSelectionLength characters may be truncated, but stays longer
    /// than that.
    [[nodiscard]] virtual std::optional<QString> currentSelectedText() = 0;
};

} // namespace vellumo

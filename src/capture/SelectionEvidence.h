// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"
#include "platform/Pasteboard.h"
#include <chrono>
#include <optional>

namespace vellumo {

/// The evidence at a double tap about a selection that accessibility has not read.
struct SelectionEvidence {
    SelectedText::Kind answer = SelectedText::Kind::Unknown; ///< result of accessibility
    bool isEditable = false; ///< whether the element that answered is editable
    std::optional<std::chrono::milliseconds> sinceFirstTap; ///< absent without a double tap
    /// Time since the application announced a change of its selection: the last one, and the last
    /// one before the first tap.
    std::optional<std::chrono::milliseconds> sinceChange;
    std::optional<std::chrono::milliseconds> sinceChangeBeforeTaps;
};

/// Returns whether a text that the application has published is its current selection.
///
/// Text stays published when the selection has ended, so that evidence can only rule it out: a
/// press of the mouse or another window since, a later change of the selection without a
/// publication, accessibility. Without any other evidence it counts once, and again for a short
/// time.
[[nodiscard]] bool isStillSelected(const Publication &publication,
                                   const SelectionEvidence &evidence);

/// Returns whether copied text looks like the line of the caret, which editors copy when nothing is
/// selected.
[[nodiscard]] bool isLineOfCaret(QStringView copied);

} // namespace vellumo

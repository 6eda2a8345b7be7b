// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"
#include "platform/Pasteboard.h"
#include <chrono>
#include <optional>

namespace vellumo {

/// What is known at a double tap about a selection that accessibility has not read.
struct SelectionEvidence {
    SelectedText::Kind answer = SelectedText::Kind::Unknown; ///< of accessibility
    bool isEditable = false; ///< the element that answered
    std::optional<std::chrono::milliseconds> sinceFirstTap; ///< absent without a double tap
    /// Since the application announced a change of its selection: the last one, and the last one
    /// before the first tap.
    std::optional<std::chrono::milliseconds> sinceChange;
    std::optional<std::chrono::milliseconds> sinceChangeBeforeTaps;
};

/// Whether a text that the application has published is what is selected in it now.
///
/// Text stays published when the selection is gone, so that each witness can only rule it out: a
/// press of the mouse or another window since, a later change of the selection that published
/// nothing, accessibility. Without any other witness it counts once, and again for a short while.
[[nodiscard]] bool isStillSelected(const Publication &publication,
                                   const SelectionEvidence &evidence);

/// Whether text that an application has copied is the line of the caret, which editors copy when
/// nothing is selected.
[[nodiscard]] bool isLineOfCaret(QStringView copied);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"
#include "platform/atspi/TextRanges.h"
#include <optional>

namespace vellumo {

/// Returns the selection around the paragraph with the caret, in word processors that relate each
/// paragraph to the previous and the next one, visible or not. `selected` are that paragraph's own
/// ranges. Absent if the paragraph has no such relations.
[[nodiscard]] std::optional<SelectedText> readParagraphFlow(const ObjectReference &paragraph,
                                                            const SelectedRanges &selected,
                                                            AtspiQuestion &question);

} // namespace vellumo

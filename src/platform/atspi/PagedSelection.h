// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"

namespace vellumo {

class AtspiQuestion;
struct ObjectReference;

/// The selection of a document that has no text itself but whose pages have, as document viewers
/// build it. Unfinished
/// when pages beyond those in sight may be selected.
[[nodiscard]] SelectedText readPages(const ObjectReference &document, AtspiQuestion &question);

} // namespace vellumo

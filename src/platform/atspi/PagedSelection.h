// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"

namespace vellumo {

class AtspiQuestion;
struct ObjectReference;

/// Returns the selection of a document without a text of its own whose pages have one, as in
/// document viewers. Unfinished when pages beyond those examined may be selected.
[[nodiscard]] SelectedText readPages(const ObjectReference &document, AtspiQuestion &question);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiQuestion.h"

namespace vellumo {

/// Returns the first object to which `object` has the relation; null if there is none or it belongs
/// to another service.
[[nodiscard]] ObjectReference relatedObject(const ObjectReference &object, quint32 relation,
                                            AtspiQuestion &question);

} // namespace vellumo

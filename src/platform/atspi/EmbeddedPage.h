// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"

namespace vellumo {

class AtspiQuestion;

/// Returns the document in the window that belongs to a child process of `processIdentifier`, as
/// pages of WebKitGTK do; null without one. References to any other process are not followed.
[[nodiscard]] ObjectReference embeddedPage(const ObjectReference &frame, qint64 processIdentifier,
                                           AtspiQuestion &question);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"

namespace vellumo {

class AtspiQuestion;

/// The document that a process started by this one shows inside the window, as WebKitGTK's pages
/// are; null without one. References that lead to any other process are not followed.
[[nodiscard]] ObjectReference embeddedPage(const ObjectReference &frame, qint64 processIdentifier,
                                           AtspiQuestion &question);

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <optional>

class QEvent;
class QWindow;

namespace vellumo {

/// Translates an event that Qt is about to deliver to one of our windows for the local monitors.
/// Absent when it is of another type, was not sent by the window system, or is a mouse event
/// outside the window that is delivered only because of a grab. The timestamp is the window
/// system's, in 32 bits; enter and leave are reported as mouse-moved with the time 0.
[[nodiscard]] std::optional<Event> localEvent(const QWindow &window, const QEvent &event);

} // namespace vellumo

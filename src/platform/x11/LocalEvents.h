// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include <optional>

class QEvent;
class QWindow;

namespace vellumo {

/// What an event that Qt is about to give to one of our windows is for a local monitor; absent when
/// it is none of their events, was not made by the window system, or is a mouse event outside the
/// window that the window gets only because it holds a grab. The time is the window system's own,
/// in 32 bits; enter and leave, reported as mouse-moved, have the time 0.
[[nodiscard]] std::optional<Event> localEvent(const QWindow &window, const QEvent &event);

} // namespace vellumo

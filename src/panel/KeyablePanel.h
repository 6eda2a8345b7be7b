// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"

namespace vellumo {

/// The style of a floating panel that can get the keyboard by a click, although showing it does not
/// activate the application.
struct KeyablePanel : FloatingPanelStyle {
    KeyablePanel() { canBecomeKey = true; }
};

} // namespace vellumo

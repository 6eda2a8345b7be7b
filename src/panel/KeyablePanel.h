// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"

namespace vellumo {

/// The style of a floating panel that can become the key window: its field takes typing although
/// showing the panel does not activate the application.
struct KeyablePanel : FloatingPanelStyle {
    KeyablePanel() { canBecomeKey = true; }
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// What must be settled before the application object is made: the window system, the renderer.
/// Ends the process with a message when there is no display to run on.
void prepareProcess();

} // namespace vellumo

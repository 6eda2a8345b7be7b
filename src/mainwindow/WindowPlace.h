// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace vellumo {

class DefaultsStore;

/// Puts a new window where the user has left it, in its size, or in the middle of the screen. A
/// place that no screen shows any more is ignored. Wayland compositors place windows themselves.
void restorePlace(QWindow &window, const DefaultsStore &defaults);

/// Stores the place and the size of a shown window, and whether it is maximized.
void storePlace(const QWindow &window, DefaultsStore &defaults);

} // namespace vellumo

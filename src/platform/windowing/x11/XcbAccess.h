// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XcbPtr.h"

namespace vellumo::x11 {

/// Returns Qt's connection; null where Qt does not use X11.
[[nodiscard]] xcb_connection_t *connection();

[[nodiscard]] xcb_window_t rootWindow(xcb_connection_t *connection);

/// Returns the atom of this name. Costs a round trip at the first call for each name.
[[nodiscard]] xcb_atom_t atom(xcb_connection_t *connection, const char *name);

} // namespace vellumo::x11

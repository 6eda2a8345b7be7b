// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XcbPtr.h"

namespace vellumo::x11 {

/// Qt's connection, or null where Qt does not use X11.
[[nodiscard]] xcb_connection_t *connection();

[[nodiscard]] xcb_window_t rootWindow(xcb_connection_t *connection);

/// Asked of the server once per name.
[[nodiscard]] xcb_atom_t atom(xcb_connection_t *connection, const char *name);

} // namespace vellumo::x11

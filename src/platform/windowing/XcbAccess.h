// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace vellumo::x11 {

struct FreeDeleter {
    void operator()(void *memory) const { std::free(memory); }
};

/// A reply or event that xcb allocated.
template <typename T> using Owned = std::unique_ptr<T, FreeDeleter>;

/// Qt's connection, or null where Qt does not use X11.
[[nodiscard]] xcb_connection_t *connection();

[[nodiscard]] xcb_window_t rootWindow(xcb_connection_t *connection);

/// Asked of the server once per name.
[[nodiscard]] xcb_atom_t atom(xcb_connection_t *connection, const char *name);

} // namespace vellumo::x11

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <optional>
#include <xcb/xcb.h>

namespace vellumo {

class X11Connection;

/// The keycodes of the copy keys on the current keyboard, and the modifier keys that the user
/// holds.
struct KeyboardMap {
    xcb_keycode_t insert = 0;
    xcb_keycode_t control = 0;
    QList<xcb_keycode_t> heldControls;
    QList<xcb_keycode_t> heldBeforeControl; ///< Shift and level keys
    QList<xcb_keycode_t> heldAfterControl; ///< Alt and Super: see X11KeyPosting.cpp

    /// Reads both from the server. Absent when the keyboard lacks one of the keys or the server
    /// does not answer.
    [[nodiscard]] static std::optional<KeyboardMap> read(X11Connection &connection);
};

} // namespace vellumo

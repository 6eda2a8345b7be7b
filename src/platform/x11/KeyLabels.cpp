// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/x11/KeyLabels.h"

#include "platform/x11/X11Connection.h"
#include <linux/input-event-codes.h>
#include <span>
#include <xkbcommon/xkbcommon.h>
#define explicit explicit_ // the header is written for C and has a field of this name
#include <xcb/xkb.h>
#undef explicit

namespace vellumo {

namespace {

/// Servers that run on the kernel's input devices number keys from here.
constexpr int firstKey = 8 + KEY_Z;
constexpr int keyCount = KEY_COMMA - KEY_Z + 1;

/// The mapping holds two keysyms of the first layout, two of the second, then others.
constexpr std::size_t keysymsPerLayout = 2;
constexpr std::size_t layouts = 2;

std::size_t currentLayout(X11Connection &connection)
{
    const auto *extension = connection.extension(&xcb_xkb_id);
    if (extension == nullptr || extension->present == 0) {
        return 0;
    }
    const auto state = connection.reply<xcb_xkb_get_state_reply_t>(
        xcb_xkb_get_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return state && state->group < layouts ? state->group : 0;
}

} // namespace

QStringList bottomRowLabels(X11Connection &connection)
{
    if (!connection.isUsable()) {
        return {};
    }
    const auto mapping = connection.reply<xcb_get_keyboard_mapping_reply_t>(
        xcb_get_keyboard_mapping(connection.xcb(), firstKey, keyCount));
    if (!mapping) {
        return {};
    }
    const std::span keysyms(
        xcb_get_keyboard_mapping_keysyms(mapping.get()),
        static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(mapping.get())));
    const std::size_t perKey = mapping->keysyms_per_keycode;
    const std::size_t column = currentLayout(connection) * keysymsPerLayout;
    QStringList labels;
    for (std::size_t key = 0; column < perKey && key < keyCount; ++key) {
        const char32_t printed = xkb_keysym_to_utf32(keysyms[(key * perKey) + column]);
        if (printed <= U' ' || !QChar::isPrint(printed)) {
            return {};
        }
        labels.append(QString::fromUcs4(&printed, 1).toUpper());
    }
    return labels;
}

} // namespace vellumo

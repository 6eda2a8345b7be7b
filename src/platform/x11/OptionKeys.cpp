// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/x11/OptionKeys.h"

#include "platform/x11/X11Connection.h"
#include <algorithm>
#include <linux/input-event-codes.h>
#include <span>

namespace vellumo {

namespace {

/// Servers that run on the kernel's input devices number keys from here.
constexpr int firstKeycode = 8;
constexpr xcb_keycode_t leftKey = firstKeycode + KEY_LEFTALT;
constexpr xcb_keycode_t rightKey = firstKeycode + KEY_RIGHTALT;

constexpr xcb_keysym_t leftAltKeysym = 0xFFE9;
constexpr xcb_keysym_t rightAltKeysym = 0xFFEA;
constexpr xcb_keysym_t leftMetaKeysym = 0xFFE7; ///< of Alt with Shift
constexpr xcb_keysym_t rightMetaKeysym = 0xFFE8;

bool isOptionKeysym(xcb_keysym_t keysym)
{
    return keysym == XCB_NO_SYMBOL || keysym == leftAltKeysym || keysym == rightAltKeysym
        || keysym == leftMetaKeysym || keysym == rightMetaKeysym;
}

bool isModifier1(const xcb_get_modifier_mapping_reply_t &modifiers, xcb_keycode_t key)
{
    const std::span keys(
        xcb_get_modifier_mapping_keycodes(&modifiers),
        static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(&modifiers)));
    const auto row = keys.subspan(std::size_t{XCB_MAP_INDEX_1} * modifiers.keycodes_per_modifier,
                                  modifiers.keycodes_per_modifier);
    return std::ranges::find(row, key) != row.end();
}

} // namespace

OptionKeys OptionKeys::read(X11Connection &connection)
{
    if (!connection.isUsable()) {
        return {};
    }
    auto *xcb = connection.xcb();
    const auto modifiersAsked = xcb_get_modifier_mapping(xcb);
    const auto leftAsked = xcb_get_keyboard_mapping(xcb, leftKey, 1);
    const auto rightAsked = xcb_get_keyboard_mapping(xcb, rightKey, 1);
    const auto modifiers = connection.reply<xcb_get_modifier_mapping_reply_t>(modifiersAsked);
    const auto left = connection.reply<xcb_get_keyboard_mapping_reply_t>(leftAsked);
    const auto right = connection.reply<xcb_get_keyboard_mapping_reply_t>(rightAsked);
    if (!modifiers || !left || !right) {
        return {};
    }
    const auto isOption = [&](const xcb_get_keyboard_mapping_reply_t &mapping, xcb_keycode_t key) {
        const std::span keysyms(
            xcb_get_keyboard_mapping_keysyms(&mapping),
            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(&mapping)));
        return isModifier1(*modifiers, key) && std::ranges::all_of(keysyms, isOptionKeysym);
    };
    return {.left = isOption(*left, leftKey), .right = isOption(*right, rightKey)};
}

} // namespace vellumo

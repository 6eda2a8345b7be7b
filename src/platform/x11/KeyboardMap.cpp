// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/KeyboardMap.h"

#include "platform/x11/X11Connection.h"

namespace vellumo {

namespace {

constexpr xcb_keysym_t insertKeysym = 0xFF63;

/// Returns the first key whose unshifted keysym in the first layout is `keysym`; 0 if there is
/// none.
xcb_keycode_t keycodeOf(const xcb_get_keyboard_mapping_reply_t &mapping, xcb_keycode_t firstKeycode,
                        xcb_keysym_t keysym)
{
    const int perKey = mapping.keysyms_per_keycode;
    const auto *keysyms = xcb_get_keyboard_mapping_keysyms(&mapping);
    const int length = xcb_get_keyboard_mapping_keysyms_length(&mapping);
    for (int i = 0; perKey > 0 && i < length; i += perKey) {
        if (keysyms[i] == keysym) {
            return static_cast<xcb_keycode_t>(firstKeycode + (i / perKey));
        }
    }
    return 0;
}

bool isHeld(const xcb_query_keymap_reply_t &keymap, xcb_keycode_t key)
{
    return (keymap.keys[key / 8] & (1 << (key % 8))) != 0;
}

} // namespace

std::optional<KeyboardMap> KeyboardMap::read(X11Connection &connection)
{
    auto *xcb = connection.xcb();
    if (!connection.isUsable()) {
        return std::nullopt;
    }
    const auto *setup = xcb_get_setup(xcb);
    const auto keymapAsked = xcb_query_keymap(xcb);
    const auto modifiersAsked = xcb_get_modifier_mapping(xcb);
    const auto mappingAsked = xcb_get_keyboard_mapping(
        xcb, setup->min_keycode, static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1));
    const auto keymap = connection.reply<xcb_query_keymap_reply_t>(keymapAsked);
    const auto modifiers = connection.reply<xcb_get_modifier_mapping_reply_t>(modifiersAsked);
    const auto mapping = connection.reply<xcb_get_keyboard_mapping_reply_t>(mappingAsked);
    if (!keymap || !modifiers || !mapping) {
        return std::nullopt;
    }

    KeyboardMap map;
    map.insert = keycodeOf(*mapping, setup->min_keycode, insertKeysym);
    const int perModifier = modifiers->keycodes_per_modifier;
    const auto *keycodes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    for (int i = 0; i < 8 * perModifier; ++i) {
        const int modifier = i / perModifier;
        const auto key = keycodes[i];
        if (key == 0) {
            continue;
        }
        if (modifier == XCB_MAP_INDEX_CONTROL && map.control == 0) {
            map.control = key;
        }
        if (!isHeld(*keymap, key)) {
            continue;
        }
        switch (modifier) {
        case XCB_MAP_INDEX_LOCK: // releasing these keys could change a lock
        case XCB_MAP_INDEX_2:
            break;
        case XCB_MAP_INDEX_CONTROL:
            map.heldControls.append(key);
            break;
        case XCB_MAP_INDEX_1:
        case XCB_MAP_INDEX_4:
            map.heldAfterControl.append(key);
            break;
        default:
            map.heldBeforeControl.append(key);
        }
    }
    if (map.insert == 0 || map.control == 0) {
        return std::nullopt;
    }
    return map;
}

} // namespace vellumo

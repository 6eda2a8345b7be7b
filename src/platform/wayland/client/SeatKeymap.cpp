// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/SeatKeymap.h"

#include "platform/wayland/client/WaylandConnection.h"
#include <memory>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace vellumo {

namespace {

constexpr xkb_keycode_t evdevOffset = 8;
constexpr uint32_t maxKeymapSize = 4 * 1024 * 1024;

using Keymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;

Keymap compile(int file, uint32_t size)
{
    Keymap keymap(nullptr, &xkb_keymap_unref);
    void *text = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (text == MAP_FAILED) {
        return keymap;
    }
    xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES);
    keymap.reset(xkb_keymap_new_from_buffer(context, static_cast<const char *>(text), size - 1,
                                            XKB_KEYMAP_FORMAT_TEXT_V1,
                                            XKB_KEYMAP_COMPILE_NO_FLAGS));
    xkb_context_unref(context);
    ::munmap(text, size);
    return keymap;
}

/// Sorts a key by its unshifted keysym in the first layout.
void add(CopyKeyCodes &keys, xkb_keysym_t keysym, uint32_t code)
{
    switch (keysym) {
    case XKB_KEY_Insert:
        keys.insert = keys.insert == 0 ? code : keys.insert;
        break;
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
        keys.control = keys.control == 0 ? code : keys.control;
        keys.controls.append(code);
        break;
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
    case XKB_KEY_ISO_Level3_Shift:
        keys.shifts.append(code);
        break;
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
    case XKB_KEY_Meta_L:
    case XKB_KEY_Meta_R:
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
        keys.menuKeys.append(code);
        break;
    default:
        break;
    }
}

} // namespace

SeatKeymap::SeatKeymap(WaylandConnection &connection)
    : seat_(reinterpret_cast<wl_seat *>(connection.bind(wl_seat_interface, 1)))
{
    static constexpr wl_seat_listener listener{&onCapabilities,
                                               [](void *, wl_seat *, const char *) {}};
    wl_seat_add_listener(seat_, &listener, this);
}

SeatKeymap::~SeatKeymap()
{
    close();
    if (keyboard_ != nullptr) {
        wl_keyboard_destroy(keyboard_);
    }
    wl_seat_destroy(seat_);
}

void SeatKeymap::close()
{
    if (file_ >= 0) {
        ::close(std::exchange(file_, -1));
    }
}

std::optional<CopyKeyCodes> SeatKeymap::copyKeys() const
{
    const Keymap keymap = file_ < 0 ? Keymap(nullptr, &xkb_keymap_unref) : compile(file_, size_);
    if (!keymap) {
        return std::nullopt;
    }
    CopyKeyCodes keys;
    const xkb_keycode_t last = xkb_keymap_max_keycode(keymap.get());
    for (xkb_keycode_t code = evdevOffset + 1; code <= last; ++code) {
        const xkb_keysym_t *keysyms = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap.get(), code, 0, 0, &keysyms) == 1) {
            add(keys, *keysyms, code - evdevOffset);
        }
    }
    return keys.control == 0 || keys.insert == 0 ? std::nullopt : std::optional(keys);
}

void SeatKeymap::onCapabilities(void *data, wl_seat *seat, uint32_t capabilities)
{
    auto &self = *static_cast<SeatKeymap *>(data);
    const bool hasKeyboard = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    if (hasKeyboard && self.keyboard_ == nullptr) {
        // Nothing but the keymap comes to a client without windows.
        static constexpr wl_keyboard_listener listener{
            &onKeymap,
            [](void *, wl_keyboard *, uint32_t, wl_surface *, wl_array *) {},
            [](void *, wl_keyboard *, uint32_t, wl_surface *) {},
            [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t) {},
            [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {},
            [](void *, wl_keyboard *, int32_t, int32_t) {},
        };
        self.keyboard_ = wl_seat_get_keyboard(seat);
        wl_keyboard_add_listener(self.keyboard_, &listener, data);
    } else if (!hasKeyboard && self.keyboard_ != nullptr) {
        wl_keyboard_destroy(std::exchange(self.keyboard_, nullptr));
        self.close();
    }
}

void SeatKeymap::onKeymap(void *data, wl_keyboard * /*keyboard*/, uint32_t format, int32_t file,
                          uint32_t size)
{
    auto &self = *static_cast<SeatKeymap *>(data);
    self.close();
    if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 || size == 0 || size > maxKeymapSize) {
        ::close(file);
        return;
    }
    self.file_ = file;
    self.size_ = size;
}

} // namespace vellumo

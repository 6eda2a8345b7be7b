// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/VirtualKeyboard.h"

#include "platform/wayland/client/WaylandConnection.h"
#include <chrono>
#include <linux/input-event-codes.h>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace vellumo {

namespace {

const wl_interface *const noTypes[] = {nullptr, nullptr, nullptr, nullptr};

enum KeyboardRequest { SetKeymap = 0, SendKey = 1, SetModifiers = 2, DestroyKeyboard = 3 };
const wl_message keyboardRequests[] = {
    {"keymap", "uhu", const_cast<const wl_interface **>(noTypes)},
    {"key", "uuu", const_cast<const wl_interface **>(noTypes)},
    {"modifiers", "uuuu", const_cast<const wl_interface **>(noTypes)},
    {"destroy", "", const_cast<const wl_interface **>(noTypes)},
};
const wl_interface keyboardInterface{"zwp_virtual_keyboard_v1", 1, 4, keyboardRequests, 0, nullptr};

enum ManagerRequest { CreateKeyboard = 0 };
const wl_interface *const createTypes[] = {&wl_seat_interface, &keyboardInterface};
const wl_message managerRequests[] = {
    {"create_virtual_keyboard", "on", const_cast<const wl_interface **>(createTypes)},
};
const wl_interface managerInterface{
    "zwp_virtual_keyboard_manager_v1", 1, 1, managerRequests, 0, nullptr};

/// Its keys have the codes of <linux/input-event-codes.h>, plus 8. It includes no file, since
/// sandboxed applications that compile it may not have any.
constexpr std::string_view keymap = R"(xkb_keymap {
    xkb_keycodes { minimum = 8; maximum = 255; <LCTL> = 37; <INS> = 118; };
    xkb_types { type "ONE_LEVEL" { modifiers = none; level_name[Level1] = "Any"; }; };
    xkb_compatibility {
        interpret Control_L { action = SetMods(modifiers = Control); };
    };
    xkb_symbols {
        key <LCTL> { type = "ONE_LEVEL", [ Control_L ] };
        key <INS> { type = "ONE_LEVEL", [ Insert ] };
        modifier_map Control { <LCTL> };
    };
};
)";

constexpr uint32_t controlMask = 1U << 2U; // the third of XKB's real modifiers

/// Returns a file with the keymap, terminated by zero; -1 on failure.
int makeKeymapFile()
{
    const int file = ::memfd_create("keymap", MFD_CLOEXEC);
    const auto size = static_cast<ssize_t>(keymap.size() + 1);
    if (file >= 0 && ::write(file, keymap.data(), keymap.size() + 1) != size) {
        ::close(file);
        return -1;
    }
    return file;
}

uint32_t now()
{
    return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                     std::chrono::steady_clock::now().time_since_epoch())
                                     .count());
}

} // namespace

bool VirtualKeyboard::isOffered(const WaylandConnection &connection)
{
    return connection.version(managerInterface.name) > 0
        && connection.version(wl_seat_interface.name) > 0;
}

VirtualKeyboard::VirtualKeyboard(WaylandConnection &connection)
    : connection_(connection)
    , seat_(connection.bind(wl_seat_interface, 1))
    , manager_(connection.bind(managerInterface, 1))
{
}

VirtualKeyboard::~VirtualKeyboard()
{
    wl_proxy_destroy(manager_);
    wl_proxy_destroy(seat_);
}

bool VirtualKeyboard::areAvailable() const
{
    return !connection_.isLost() && !connection_.isStalled();
}

bool VirtualKeyboard::send(QDeadlineTimer deadline)
{
    const int file = makeKeymapFile();
    if (file < 0) {
        return false;
    }
    wl_proxy *keyboard =
        wl_proxy_marshal_flags(manager_, CreateKeyboard, &keyboardInterface, 1, 0, seat_, nullptr);
    wl_proxy_marshal_flags(keyboard, SetKeymap, nullptr, 1, 0, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1,
                           file, static_cast<uint32_t>(keymap.size() + 1));
    const auto setModifiers = [&](uint32_t pressed) {
        wl_proxy_marshal_flags(keyboard, SetModifiers, nullptr, 1, 0, pressed, 0, 0, 0);
    };
    const auto sendKey = [&](uint32_t key, uint32_t state) {
        wl_proxy_marshal_flags(keyboard, SendKey, nullptr, 1, 0, now(), key, state);
    };
    setModifiers(0);
    sendKey(KEY_LEFTCTRL, WL_KEYBOARD_KEY_STATE_PRESSED);
    setModifiers(controlMask);
    sendKey(KEY_INSERT, WL_KEYBOARD_KEY_STATE_PRESSED);
    sendKey(KEY_INSERT, WL_KEYBOARD_KEY_STATE_RELEASED);
    sendKey(KEY_LEFTCTRL, WL_KEYBOARD_KEY_STATE_RELEASED);
    setModifiers(0);
    const bool isDone = connection_.roundTrip(deadline);
    ::close(file);
    wl_proxy_marshal_flags(keyboard, DestroyKeyboard, nullptr, 1, WL_MARSHAL_FLAG_DESTROY);
    static_cast<void>(connection_.flush(QDeadlineTimer(0)));
    return isDone && !connection_.isLost();
}

} // namespace vellumo

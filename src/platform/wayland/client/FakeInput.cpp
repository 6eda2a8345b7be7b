// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/FakeInput.h"

#include "platform/wayland/client/WaylandConnection.h"

namespace vellumo {

namespace {

const wl_interface *const noTypes[] = {nullptr, nullptr, nullptr};

constexpr wl_message describe(const char *name, const char *signature)
{
    return {name, signature, const_cast<const wl_interface **>(noTypes)};
}

/// The first version with keys.
constexpr uint32_t version = 4;

enum Request { Authenticate = 0, SendKey = 10 };
constexpr wl_message requests[] = {
    describe("authenticate", "ss"),  describe("pointer_motion", "ff"),
    describe("button", "uu"),        describe("axis", "uf"),
    describe("touch_down", "2uff"),  describe("touch_motion", "2uff"),
    describe("touch_up", "2u"),      describe("touch_cancel", "2"),
    describe("touch_frame", "2"),    describe("pointer_motion_absolute", "3ff"),
    describe("keyboard_key", "4uu"),
};
const wl_interface interface {
    "org_kde_kwin_fake_input", version, std::size(requests), requests, 0, nullptr
};

} // namespace

bool FakeInput::isOffered(const WaylandConnection &connection)
{
    return connection.version(interface.name) >= version
        && connection.version(wl_seat_interface.name) > 0;
}

FakeInput::FakeInput(WaylandConnection &connection) : connection_(connection), keymap_(connection)
{
}

FakeInput::~FakeInput()
{
    if (input_ != nullptr) {
        wl_proxy_destroy(input_);
    }
}

bool FakeInput::areAvailable() const
{
    return !connection_.isLost() && !connection_.isStalled();
}

bool FakeInput::send(QDeadlineTimer deadline)
{
    const auto keys = keymap_.copyKeys();
    if (!keys) {
        return false;
    }
    if (input_ == nullptr) {
        input_ = connection_.bind(interface, version);
        wl_proxy_marshal_flags(input_, Authenticate, nullptr, version, 0, "vellumo",
                               "copies the selection to explain it");
    }
    const auto sendKey = [this](uint32_t key, uint32_t state) {
        wl_proxy_marshal_flags(input_, SendKey, nullptr, version, 0, key, state);
    };
    const auto release = [&](const QList<uint32_t> &held) {
        for (const auto key : held) {
            sendKey(key, WL_KEYBOARD_KEY_STATE_RELEASED);
        }
    };
    // KWin does not tell which modifiers are held, and ignores the release of a key that is not.
    release(keys->controls);
    release(keys->shifts);
    // Press Control before Alt or Super is released: Alt released alone would open a menu bar in
    // the application, which would then get the copy keys.
    sendKey(keys->control, WL_KEYBOARD_KEY_STATE_PRESSED);
    release(keys->menuKeys);
    sendKey(keys->insert, WL_KEYBOARD_KEY_STATE_PRESSED);
    sendKey(keys->insert, WL_KEYBOARD_KEY_STATE_RELEASED);
    sendKey(keys->control, WL_KEYBOARD_KEY_STATE_RELEASED);
    return connection_.roundTrip(deadline) && !connection_.isLost();
}

} // namespace vellumo

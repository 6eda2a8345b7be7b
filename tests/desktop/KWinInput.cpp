// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/KWinInput.h"

#include <QThread>
#include <cstring>
#include <iterator>
#include <linux/input-event-codes.h>
#include <wayland-client.h>

namespace vellumo::test {

namespace {

constexpr uint32_t version = 4; ///< the first one with keys

enum Request { Authenticate = 0, SendKey = 10 };

const wl_interface *noTypes[] = {nullptr, nullptr, nullptr};

const wl_message requests[] = {
    {"authenticate", "ss", noTypes}, {"pointer_motion", "ff", noTypes},
    {"button", "uu", noTypes},       {"axis", "uf", noTypes},
    {"touch_down", "2uff", noTypes}, {"touch_motion", "2uff", noTypes},
    {"touch_up", "2u", noTypes},     {"touch_cancel", "2", noTypes},
    {"touch_frame", "2", noTypes},   {"pointer_motion_absolute", "3ff", noTypes},
    {"keyboard_key", "4uu", noTypes}};

const wl_interface fakeInput{
    "org_kde_kwin_fake_input", version, std::size(requests), requests, 0, nullptr};

void bindFakeInput(void *input, wl_registry *registry, uint32_t name, const char *interface,
                   uint32_t offered)
{
    if (std::strcmp(interface, fakeInput.name) == 0 && offered >= version) {
        *static_cast<wl_proxy **>(input) =
            static_cast<wl_proxy *>(wl_registry_bind(registry, name, &fakeInput, version));
    }
}

void ignoreRemoval(void * /*input*/, wl_registry * /*registry*/, uint32_t /*name*/) { }

} // namespace

KWinInput::KWinInput() : display_(wl_display_connect(nullptr))
{
    if (display_ == nullptr) {
        return;
    }
    wl_registry *const registry = wl_display_get_registry(display_);
    constexpr wl_registry_listener listener{bindFakeInput, ignoreRemoval};
    wl_registry_add_listener(registry, &listener, &input_);
    wl_display_roundtrip(display_);
    wl_registry_destroy(registry);
    if (input_ != nullptr) {
        wl_proxy_marshal_flags(input_, Authenticate, nullptr, version, 0, "test", "test");
        wl_display_roundtrip(display_);
    }
}

KWinInput::~KWinInput()
{
    if (input_ != nullptr) {
        wl_proxy_destroy(input_);
    }
    if (display_ != nullptr) {
        wl_display_disconnect(display_);
    }
}

void KWinInput::send(quint32 key, quint32 state) const
{
    wl_proxy_marshal_flags(input_, SendKey, nullptr, version, 0, key, state);
    wl_display_roundtrip(display_);
}

void KWinInput::chord(quint32 modifier, quint32 key) const
{
    press(modifier);
    press(key);
    release(key);
    release(modifier);
}

void KWinInput::doubleTap() const
{
    for (int i = 0; i < 2; ++i) {
        press(KEY_LEFTALT);
        QThread::msleep(30);
        release(KEY_LEFTALT);
        QThread::msleep(90);
    }
}

} // namespace vellumo::test

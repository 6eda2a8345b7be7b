// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/EmbeddingTray.h"

#include "driver/Waiting.h"
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace vellumo::test {

namespace {

constexpr QRect place(600, 700, 24, 24);

struct Free {
    void operator()(void *memory) const { std::free(memory); }
};

} // namespace

EmbeddingTray::EmbeddingTray() : c_(xcb_connect(nullptr, nullptr))
{
    const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(c_)).data;
    root_ = screen->root;
    window_ = xcb_generate_id(c_);
    const std::array<quint32, 2> values{screen->white_pixel, 1};
    xcb_create_window(c_, XCB_COPY_FROM_PARENT, window_, root_, place.x(), place.y(), place.width(),
                      place.height(), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(c_, window_);
    const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(c_, window_, selection, XCB_CURRENT_TIME);
    xcb_client_message_event_t news{};
    news.response_type = XCB_CLIENT_MESSAGE;
    news.format = 32;
    news.window = root_;
    news.type = atom("MANAGER");
    news.data.data32[1] = selection;
    news.data.data32[2] = window_;
    xcb_send_event(c_, 0, root_, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&news));
    xcb_flush(c_);
}

EmbeddingTray::~EmbeddingTray()
{
    xcb_disconnect(c_);
}

xcb_atom_t EmbeddingTray::atom(const char *name) const
{
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(
        c_, xcb_intern_atom(c_, 0, static_cast<uint16_t>(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool EmbeddingTray::embedIcon()
{
    const xcb_atom_t opcode = atom("_NET_SYSTEM_TRAY_OPCODE");
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(c_)}) {
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE)
            continue;
        const auto *request = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
        if (request->type != opcode || request->data.data32[1] != 0)
            continue;
        const xcb_window_t icon = request->data.data32[2];
        xcb_reparent_window(c_, icon, window_, 0, 0);
        const std::array<quint32, 2> size{static_cast<quint32>(place.width()),
                                          static_cast<quint32>(place.height())};
        xcb_configure_window(c_, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size.data());
        xcb_map_window(c_, icon);
        xcb_flush(c_);
        return true;
    }
    return false;
}

std::optional<QRect> EmbeddingTray::waitForIcon()
{
    const bool isThere = waitUntil([this] { return embedIcon(); }, std::chrono::seconds(15));
    return isThere ? std::optional(place) : std::nullopt;
}

} // namespace vellumo::test

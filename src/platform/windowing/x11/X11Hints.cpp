// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/X11Hints.h"

#include "platform/windowing/x11/XcbAccess.h"
#include <algorithm>
#include <array>
#include <iterator>
#include <vector>
#include <xcb/shape.h>

namespace vellumo::x11 {

namespace {

constexpr quint32 stateAdd = 1;
constexpr quint32 everyDesktop = 0xFFFFFFFF;
constexpr quint32 sourceApplication = 1;
constexpr quint32 sourcePager = 2;

void sendToRoot(xcb_connection_t *c, xcb_window_t window, const char *type,
                const std::array<quint32, 5> &data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(c, type);
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(c, 0, rootWindow(c),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
}

/// Returns the 32-bit values of a property; empty when there is none.
std::vector<quint32> property(xcb_connection_t *c, xcb_window_t window, const char *name,
                              xcb_atom_t type)
{
    constexpr quint32 maxValues = 64;
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        c, xcb_get_property(c, 0, window, atom(c, name), type, 0, maxValues), nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto *values = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    const int count = xcb_get_property_value_length(reply.get()) / 4;
    return {values, std::next(values, count)};
}

void setShape(WId window, xcb_shape_sk_t kind, const QList<QRect> &rects)
{
    std::vector<xcb_rectangle_t> list;
    list.reserve(static_cast<size_t>(rects.size()));
    for (const QRect &rect : rects) {
        list.push_back({static_cast<int16_t>(rect.x()), static_cast<int16_t>(rect.y()),
                        static_cast<uint16_t>(rect.width()), static_cast<uint16_t>(rect.height())});
    }
    xcb_shape_rectangles(connection(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED,
                         static_cast<xcb_window_t>(window), 0, 0,
                         static_cast<uint32_t>(list.size()), list.data());
}

} // namespace

bool isAvailable()
{
    return connection() != nullptr;
}

void leaveOutOfLists(WId window)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    const std::array<xcb_atom_t, 2> states{atom(c, "_NET_WM_STATE_SKIP_TASKBAR"),
                                           atom(c, "_NET_WM_STATE_SKIP_PAGER")};
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window),
                        atom(c, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32, states.size(), states.data());
}

void refuseShadow(WId window)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    constexpr quint32 none = 0;
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window),
                        atom(c, "_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, 32, 1, &none);
}

void floatEverywhere(WId window)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window);
    // "Above" was set before mapping, but a window manager that is still handling the last
    // unmapping removes it. Of the two states for all workspaces, some window managers support only
    // one.
    sendToRoot(c, id, "_NET_WM_STATE",
               {stateAdd, atom(c, "_NET_WM_STATE_STICKY"), atom(c, "_NET_WM_STATE_ABOVE"),
                sourceApplication, 0});
    sendToRoot(c, id, "_NET_WM_DESKTOP", {everyDesktop, sourceApplication, 0, 0, 0});
    sendToRoot(c, id, "_NET_WM_STATE",
               {stateAdd, atom(c, "_NET_WM_STATE_SKIP_TASKBAR"),
                atom(c, "_NET_WM_STATE_SKIP_PAGER"), sourceApplication, 0});
    xcb_flush(c);
}

WId activeWindow()
{
    auto *c = connection();
    if (!c) {
        return 0;
    }
    const auto values = property(c, rootWindow(c), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
    return values.empty() ? 0 : values.front();
}

bool isFullScreen(WId window)
{
    auto *c = connection();
    if (!c || window == 0) {
        return false;
    }
    const auto states =
        property(c, static_cast<xcb_window_t>(window), "_NET_WM_STATE", XCB_ATOM_ATOM);
    return std::find(states.begin(), states.end(), atom(c, "_NET_WM_STATE_FULLSCREEN"))
        != states.end();
}

bool isButtonHeld()
{
    auto *c = connection();
    if (!c) {
        return false;
    }
    constexpr quint16 buttons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    const XcbPtr<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(c, xcb_query_pointer(c, rootWindow(c)), nullptr));
    return pointer && (pointer->mask & buttons) != 0;
}

void setTransientFor(WId window, WId parent)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window);
    if (parent == 0) {
        xcb_delete_property(c, id, XCB_ATOM_WM_TRANSIENT_FOR);
    } else {
        const auto value = static_cast<xcb_window_t>(parent);
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, id, XCB_ATOM_WM_TRANSIENT_FOR,
                            XCB_ATOM_WINDOW, 32, 1, &value);
    }
    xcb_flush(c);
}

void activate(WId window)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    sendToRoot(c, static_cast<xcb_window_t>(window), "_NET_ACTIVE_WINDOW",
               {sourcePager, XCB_CURRENT_TIME, 0, 0, 0});
    xcb_flush(c);
}

void withdraw(WId window)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window);
    xcb_unmap_window(c, id);
    // ICCCM 4.1.4: the window manager may miss the unmapping itself
    xcb_unmap_notify_event_t event{};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = rootWindow(c);
    event.window = id;
    xcb_send_event(c, 0, rootWindow(c),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&event));
    xcb_flush(c);
}

void setBackground(WId window, quint32 pixel)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    xcb_change_window_attributes(c, static_cast<xcb_window_t>(window), XCB_CW_BACK_PIXEL, &pixel);
}

void keepContentAtBottomRight(WId window)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    const quint32 gravity = XCB_GRAVITY_SOUTH_EAST;
    xcb_change_window_attributes(c, static_cast<xcb_window_t>(window), XCB_CW_BIT_GRAVITY,
                                 &gravity);
}

void setBoundingShape(WId window, const QList<QRect> &rects)
{
    auto *c = connection();
    if (!c) {
        return;
    }
    if (rects.isEmpty()) {
        xcb_shape_mask(c, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                       static_cast<xcb_window_t>(window), 0, 0, XCB_PIXMAP_NONE);
    } else {
        setShape(window, XCB_SHAPE_SK_BOUNDING, rects);
    }
    xcb_flush(c);
}

void setInputShape(WId window, const QList<QRect> &rects)
{
    if (auto *c = connection()) {
        setShape(window, XCB_SHAPE_SK_INPUT, rects);
        xcb_flush(c);
    }
}

} // namespace vellumo::x11

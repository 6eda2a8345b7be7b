// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "PixelMeter.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace vellumo::bench {

namespace {

struct FreeDeleter {
    void operator()(void *pointer) const { std::free(pointer); }
};
template <typename T> using Reply = std::unique_ptr<T, FreeDeleter>;

bool isFlat(const QImage &image)
{
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        const auto differs = [first](QRgb pixel) { return ((pixel ^ first) & RGB_MASK) != 0; };
        if (std::any_of(line, line + image.width(), differs))
            return false;
    }
    return true;
}

} // namespace

struct PixelMeter::Private {
    xcb_connection_t *connection = nullptr;
    xcb_screen_t *screen = nullptr;
    xcb_damage_damage_t damage = 0;
    quint8 damageEvent = 0;
    QElapsedTimer clock;

    [[nodiscard]] double now() const { return static_cast<double>(clock.nsecsElapsed()) / 1e6; }

    [[nodiscard]] QImage grab(QRect area) const
    {
        area = area.intersected({0, 0, screen->width_in_pixels, screen->height_in_pixels});
        if (area.isEmpty())
            return {};
        const auto cookie = xcb_get_image(
            connection, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, static_cast<qint16>(area.x()),
            static_cast<qint16>(area.y()), static_cast<quint16>(area.width()),
            static_cast<quint16>(area.height()), ~0U);
        const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection, cookie, nullptr));
        if (!reply)
            return {};
        return QImage(xcb_get_image_data(reply.get()), area.width(), area.height(),
                      qsizetype{4} * area.width(), QImage::Format_RGB32)
            .copy();
    }

    [[nodiscard]] QRect geometry(xcb_window_t window) const
    {
        const auto sizeCookie = xcb_get_geometry(connection, window);
        const auto placeCookie = xcb_translate_coordinates(connection, window, screen->root, 0, 0);
        const Reply<xcb_get_geometry_reply_t> size(
            xcb_get_geometry_reply(connection, sizeCookie, nullptr));
        const Reply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(connection, placeCookie, nullptr));
        if (!size || !place)
            return {};
        return {place->dst_x, place->dst_y, size->width, size->height};
    }

    /// Returns the window itself, or the window of this class inside a window manager's frame.
    [[nodiscard]] xcb_window_t ofClass(xcb_window_t window, const QByteArray &part, int depth) const
    {
        const auto cookie =
            xcb_get_property(connection, false, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64);
        const Reply<xcb_get_property_reply_t> name(
            xcb_get_property_reply(connection, cookie, nullptr));
        if (name) {
            const QByteArray text(static_cast<const char *>(xcb_get_property_value(name.get())),
                                  xcb_get_property_value_length(name.get()));
            if (text.toLower().contains(part) && geometry(window).width() >= 100)
                return window;
        }
        if (depth == 0)
            return XCB_WINDOW_NONE;
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
        for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
            const xcb_window_t found =
                ofClass(xcb_query_tree_children(tree.get())[i], part, depth - 1);
            if (found != XCB_WINDOW_NONE)
                return found;
        }
        return XCB_WINDOW_NONE;
    }

    /// Discards pending events.
    void drain() const
    {
        xcb_damage_subtract(connection, damage, XCB_NONE, XCB_NONE);
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
        while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) { }
    }

    /// Returns null on timeout. Checks xcb's queue first, since events that arrived with a reply
    /// are no longer in the socket.
    [[nodiscard]] Reply<xcb_generic_event_t> nextEvent(double until) const
    {
        xcb_flush(connection);
        pollfd descriptor{xcb_get_file_descriptor(connection), POLLIN, 0};
        for (;;) {
            if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)})
                return event;
            const int left = static_cast<int>(until - now()) + 1;
            if (left <= 0 || ::poll(&descriptor, 1, left) <= 0)
                return nullptr;
        }
    }
};

PixelMeter::PixelMeter() : d_(std::make_unique<Private>())
{
    d_->connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(d_->connection) != 0)
        qFatal("no display");
    d_->screen = xcb_setup_roots_iterator(xcb_get_setup(d_->connection)).data;
    const auto *extension = xcb_get_extension_data(d_->connection, &xcb_damage_id);
    if (extension == nullptr || extension->present == 0)
        qFatal("the display does not tell what changes");
    std::free(xcb_damage_query_version_reply(
        d_->connection, xcb_damage_query_version(d_->connection, 1, 1), nullptr));
    d_->damageEvent = static_cast<quint8>(extension->first_event + XCB_DAMAGE_NOTIFY);

    const quint32 mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(d_->connection, d_->screen->root, XCB_CW_EVENT_MASK, &mask);
    // one event until it is subtracted, so that much drawing does not keep the meter busy
    d_->damage = xcb_generate_id(d_->connection);
    xcb_damage_create(d_->connection, d_->damage, d_->screen->root,
                      XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    d_->clock.start();
    d_->drain();
}

PixelMeter::~PixelMeter()
{
    xcb_disconnect(d_->connection);
}

std::optional<PixelMeter::Sighting> PixelMeter::watch(const QString &part,
                                                      const std::function<void()> &trigger,
                                                      std::chrono::milliseconds time)
{
    const QRect whole(0, 0, d_->screen->width_in_pixels, d_->screen->height_in_pixels);
    const QImage before = d_->grab(whole);
    d_->drain();
    xcb_window_t window = XCB_WINDOW_NONE;
    Sighting sighting;
    const double zero = d_->now();
    const double until = zero + static_cast<double>(time.count());
    trigger();
    while (auto event = d_->nextEvent(until)) {
        const double began = d_->now();
        bool changed = false;
        for (; event; event.reset(xcb_poll_for_event(d_->connection))) {
            const int type = event->response_type & 0x7f;
            changed = changed || type == d_->damageEvent;
            if (type != XCB_MAP_NOTIFY || window != XCB_WINDOW_NONE)
                continue;
            const auto *map = reinterpret_cast<const xcb_map_notify_event_t *>(event.get());
            window = d_->ofClass(map->window, part.toLower().toLatin1(), 2);
            if (window != XCB_WINDOW_NONE)
                sighting.mapped = began - zero;
        }
        if (changed) // before the capture: later drawing is reported again
            xcb_damage_subtract(d_->connection, d_->damage, XCB_NONE, XCB_NONE);
        if (window == XCB_WINDOW_NONE)
            continue;
        const QRect area = d_->geometry(window).intersected(whole);
        const QImage after = d_->grab(area);
        if (!after.isNull() && after != before.copy(area) && !isFlat(after)) {
            sighting.content = began - zero;
            return sighting;
        }
    }
    return std::nullopt;
}

bool PixelMeter::waitForRest(std::chrono::milliseconds quiet, std::chrono::milliseconds time)
{
    const double end = d_->now() + static_cast<double>(time.count());
    do {
        d_->drain();
        if (!d_->nextEvent(d_->now() + static_cast<double>(quiet.count())))
            return true;
    } while (d_->now() < end);
    return false;
}

} // namespace vellumo::bench

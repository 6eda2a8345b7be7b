// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/StrutWatch.h"

#include "platform/windowing/x11/XcbAccess.h"
#include <QGuiApplication>
#include <algorithm>
#include <iterator>

namespace vellumo {

namespace {

constexpr quint32 maxWindows = 1024;
constexpr quint32 maxNumbers = 12;

QList<quint32> numbersOf(xcb_connection_t *c, xcb_get_property_cookie_t question)
{
    const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(c, question, nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto *values = static_cast<const quint32 *>(xcb_get_property_value(reply.get()));
    return {values, std::next(values, xcb_get_property_value_length(reply.get()) / 4)};
}

/// Returns the struts of all managed windows. All requests are sent before the first reply is
/// awaited.
QList<QList<quint32>> fetchNumbers(xcb_connection_t *c)
{
    const auto ask = [c](xcb_window_t window, const char *name, xcb_atom_t type, quint32 length) {
        return xcb_get_property(c, 0, window, x11::atom(c, name), type, 0, length);
    };
    const QList<quint32> windows =
        numbersOf(c, ask(x11::rootWindow(c), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, maxWindows));
    QList<xcb_get_property_cookie_t> questions;
    for (const quint32 window : windows) {
        questions << ask(window, "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, maxNumbers)
                  << ask(window, "_NET_WM_STRUT", XCB_ATOM_CARDINAL, maxNumbers);
    }
    QList<QList<quint32>> found;
    for (qsizetype i = 0; i < questions.size(); i += 2) {
        const QList<quint32> partial = numbersOf(c, questions[i]);
        const QList<quint32> whole = numbersOf(c, questions[i + 1]);
        const QList<quint32> &numbers = partial.isEmpty() ? whole : partial;
        if (std::ranges::any_of(numbers, [](quint32 number) { return number != 0; })) {
            found << numbers;
        }
    }
    return found;
}

} // namespace

StrutWatch::StrutWatch(QObject *parent) : QObject(parent)
{
    settling_.setSingleShot(true);
    settling_.setInterval(50);
    connect(&settling_, &QTimer::timeout, this, &StrutWatch::refresh);
    if (x11::connection()) {
        refresh();
        qApp->installNativeEventFilter(this);
    }
}

StrutWatch::~StrutWatch() = default;

QMargins StrutWatch::margins(const QRect &screen) const
{
    auto *c = x11::connection();
    if (!c || struts_.isEmpty()) {
        return {};
    }
    // the current size; the connection's setup has that of its start
    const XcbPtr<xcb_get_geometry_reply_t> desktop(
        xcb_get_geometry_reply(c, xcb_get_geometry(c, x11::rootWindow(c)), nullptr));
    return desktop ? reservedMargins(screen, {desktop->width, desktop->height}, struts_)
                   : QMargins();
}

void StrutWatch::refresh()
{
    auto *c = x11::connection();
    const bool isNeeded = c && QGuiApplication::screens().size() > 1;
    const QList<QList<quint32>> numbers = isNeeded ? fetchNumbers(c) : QList<QList<quint32>>();
    if (numbers == numbers_) {
        return;
    }
    numbers_ = numbers;
    struts_.clear();
    for (const QList<quint32> &each : numbers) {
        struts_ << Strut::fromNumbers(each);
    }
    Q_EMIT changed();
}

bool StrutWatch::nativeEventFilter(const QByteArray &eventType, void *message, qintptr * /*result*/)
{
    auto *c = x11::connection();
    if (!c || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) {
        return false;
    }
    const auto *notify = reinterpret_cast<const xcb_property_notify_event_t *>(event);
    if (notify->window == x11::rootWindow(c)
        && (notify->atom == x11::atom(c, "_NET_WORKAREA")
            || notify->atom == x11::atom(c, "_NET_CLIENT_LIST"))) {
        settling_.start();
    }
    return false;
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/CompositorWatch.h"

#include "platform/windowing/x11/XcbAccess.h"
#include <QCoreApplication>
#include <array>
#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>

namespace vellumo {

namespace {

xcb_extension_t compositeExtension = {"Composite", 0};

/// Asks the Composite extension for the pixmap of a window, which only a redirected window has.
bool hasOffScreenPixmap(xcb_connection_t *c, xcb_window_t window)
{
    const auto *extension = xcb_get_extension_data(c, &compositeExtension);
    if (!extension || !extension->present) {
        return false;
    }
    struct {
        uint8_t major = 0;
        uint8_t minor = 0;
        uint16_t length = 0;
        uint32_t window = 0;
        uint32_t pixmap = 0;
    } request; // NameWindowPixmap; the library fills in the first three
    request.window = window;
    request.pixmap = xcb_generate_id(c);

    constexpr uint8_t nameWindowPixmap = 6;
    const xcb_protocol_request_t protocol{1, &compositeExtension, nameWindowPixmap, 1};
    std::array<iovec, 3> parts{};
    parts[2] = {&request, sizeof request}; // libxcb uses the two parts before it
    const xcb_void_cookie_t cookie{xcb_send_request(c, XCB_REQUEST_CHECKED, &parts[2], &protocol)};
    const XcbPtr<xcb_generic_error_t> error(xcb_request_check(c, cookie));
    if (!error) {
        xcb_free_pixmap(c, request.pixmap);
    }
    return !error;
}

/// Returns whether a new window on this screen would be blended. Creates a window outside the
/// screen for the test and destroys it at once.
bool drawsOffScreen(xcb_connection_t *c)
{
    const xcb_window_t window = xcb_generate_id(c);
    const quint32 overrideRedirect = 1;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window, x11::rootWindow(c), -8, -8, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &overrideRedirect);
    xcb_map_window(c, window);
    const bool result = hasOffScreenPixmap(c, window);
    xcb_destroy_window(c, window);
    xcb_flush(c);
    return result;
}

} // namespace

CompositorWatch::CompositorWatch(QObject *parent) : QObject(parent)
{
    using namespace std::chrono_literals;
    settling_.setSingleShot(true);
    settling_.setInterval(1s);
    connect(&settling_, &QTimer::timeout, this, &CompositorWatch::refresh);
    if (x11::connection()) {
        watch();
        refresh();
    }
}

CompositorWatch::~CompositorWatch()
{
    xcb_connection_t *c = x11::connection();
    if (c && window_ != 0) {
        xcb_destroy_window(c, window_);
        xcb_flush(c);
    }
}

void CompositorWatch::watch()
{
    xcb_connection_t *c = x11::connection();
    selection_ = x11::atom(c, "_NET_WM_CM_S0");
    const XcbPtr<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection_), nullptr));
    isOwned_ = owner && owner->owner != XCB_WINDOW_NONE;

    const auto *extension = xcb_get_extension_data(c, &xcb_xfixes_id);
    if (!extension || !extension->present) {
        return;
    }
    // the server accepts XFixes requests only after this one
    const XcbPtr<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        c, xcb_xfixes_query_version(c, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    firstEvent_ = extension->first_event;
    window_ = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, x11::rootWindow(c), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_xfixes_select_selection_input(c, window_, selection_,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                                          | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                                          | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(c);
    qApp->installNativeEventFilter(this);
}

void CompositorWatch::refresh()
{
    xcb_connection_t *c = x11::connection();
    if (!c) {
        return;
    }
    const bool compositing = isOwned_ && drawsOffScreen(c);
    if (compositing != isCompositing_) {
        isCompositing_ = compositing;
        Q_EMIT changed();
    }
}

bool CompositorWatch::nativeEventFilter(const QByteArray &eventType, void *message,
                                        qintptr * /*result*/)
{
    if (window_ == 0 || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != firstEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
        return false;
    }
    const auto *notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t *>(event);
    if (notify->selection == selection_) {
        isOwned_ = notify->owner != XCB_WINDOW_NONE;
        refresh();
        settling_.start();
    }
    return false;
}

} // namespace vellumo

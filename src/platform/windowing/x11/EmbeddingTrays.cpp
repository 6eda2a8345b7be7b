// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/EmbeddingTrays.h"

#include "platform/windowing/x11/XcbAccess.h"
#include <QCoreApplication>

namespace vellumo {

namespace {
constexpr auto traySelection = "_NET_SYSTEM_TRAY_S0";
}

EmbeddingTrays::EmbeddingTrays(QObject *parent) : QObject(parent)
{
    if (x11::connection()) {
        qApp->installNativeEventFilter(this);
    }
}

EmbeddingTrays::~EmbeddingTrays() = default;

bool EmbeddingTrays::isPresent() const
{
    auto *c = x11::connection();
    if (!c) {
        return false;
    }
    const XcbPtr<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        c, xcb_get_selection_owner(c, x11::atom(c, traySelection)), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool EmbeddingTrays::nativeEventFilter(const QByteArray &eventType, void *message,
                                       qintptr * /*result*/)
{
    auto *c = x11::connection();
    if (!c || eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) {
        return false;
    }
    const auto *news = reinterpret_cast<const xcb_client_message_event_t *>(event);
    if (news->type == x11::atom(c, "MANAGER")
        && news->data.data32[1] == x11::atom(c, traySelection)) {
        // queued, since the toolkit processes the same message
        QMetaObject::invokeMethod(this, &EmbeddingTrays::appeared, Qt::QueuedConnection);
    }
    return false;
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/XcbAccess.h"

#include "platform/x11/AtomCache.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

namespace vellumo::x11 {

xcb_connection_t *connection()
{
    const auto *x11 =
        qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t rootWindow(xcb_connection_t *connection)
{
    return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_atom_t atom(xcb_connection_t *connection, const char *name)
{
    static AtomCache cache([](auto *asked, auto cookie) {
        return AtomCache::Reply(xcb_intern_atom_reply(asked, cookie, nullptr));
    });
    return cache.atom(connection, name);
}

} // namespace vellumo::x11

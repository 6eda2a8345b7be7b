// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/XcbAccess.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QHash>
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
    static QHash<QByteArray, xcb_atom_t> known;
    const QByteArray key(name);
    const auto found = known.constFind(key);
    if (found != known.cend()) {
        return *found;
    }
    const XcbPtr<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<uint16_t>(key.size()), name),
        nullptr));
    const xcb_atom_t value = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    known.insert(key, value);
    return value;
}

} // namespace vellumo::x11

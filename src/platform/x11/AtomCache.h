// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XcbPtr.h"
#include <QByteArray>
#include <QHash>
#include <functional>
#include <span>
#include <string_view>

namespace vellumo {

/// The atoms of an X server by their names. An atom is asked for once, unless the server does not
/// answer. One thread only.
class AtomCache {
public:
    using Reply = XcbPtr<xcb_intern_atom_reply_t>;
    /// Waits for the reply to a request; null without one.
    using Waiting = std::function<Reply(xcb_connection_t *, xcb_intern_atom_cookie_t)>;

    explicit AtomCache(Waiting wait) : wait_(std::move(wait)) { }

    /// Asks for all names with one round trip.
    void prefetch(xcb_connection_t *connection, std::span<const std::string_view> names);

    /// Returns the atom of this name, creating it if needed; XCB_ATOM_NONE without a reply. Costs a
    /// round trip unless the atom is known.
    [[nodiscard]] xcb_atom_t atom(xcb_connection_t *connection, const QByteArray &name);

private:
    xcb_atom_t take(xcb_connection_t *connection, const QByteArray &name,
                    xcb_intern_atom_cookie_t cookie);

    Waiting wait_;
    QHash<QByteArray, xcb_atom_t> known_;
};

} // namespace vellumo

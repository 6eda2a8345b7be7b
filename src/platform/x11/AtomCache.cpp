// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/AtomCache.h"

#include <vector>

namespace vellumo {

namespace {

xcb_intern_atom_cookie_t request(xcb_connection_t *connection, std::string_view name)
{
    return xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data());
}

} // namespace

void AtomCache::prefetch(xcb_connection_t *connection, std::span<const std::string_view> names)
{
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(names.size());
    for (const auto name : names) {
        cookies.push_back(request(connection, name));
    }
    for (size_t i = 0; i < names.size(); ++i) {
        take(connection, QByteArray(names[i].data(), static_cast<qsizetype>(names[i].size())),
             cookies[i]);
    }
}

xcb_atom_t AtomCache::atom(xcb_connection_t *connection, const QByteArray &name)
{
    const auto known = known_.constFind(name);
    return known != known_.cend()
        ? *known
        : take(connection, name,
               request(connection, {name.constData(), static_cast<size_t>(name.size())}));
}

xcb_atom_t AtomCache::take(xcb_connection_t *connection, const QByteArray &name,
                           xcb_intern_atom_cookie_t cookie)
{
    const Reply reply = wait_(connection, cookie);
    return reply ? *known_.insert(name, reply->atom) : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace vellumo

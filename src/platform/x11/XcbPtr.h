// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace vellumo {

struct FreeDeleter {
    void operator()(void *memory) const { std::free(memory); } // NOLINT(*-no-malloc)
};

/// Owns a reply or an event, which libxcb allocates with malloc.
template <typename T> using XcbPtr = std::unique_ptr<T, FreeDeleter>;
using XcbEvent = XcbPtr<xcb_generic_event_t>;

/// Returns the event's type without the bit that marks events sent by other clients.
inline quint8 eventType(const xcb_generic_event_t &event)
{
    return event.response_type & 0x7F;
}

template <typename T> const T &eventAs(const xcb_generic_event_t &event)
{
    return reinterpret_cast<const T &>(event);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QtGlobal>
#include <optional>
#include <wayland-client.h>

namespace vellumo {

class WaylandConnection;

/// Codes of keys on the user's keyboard, as in <linux/input-event-codes.h>.
struct CopyKeyCodes {
    uint32_t control = 0;
    uint32_t insert = 0;
    QList<uint32_t> controls; ///< every key of these modifiers, which the user may hold
    QList<uint32_t> shifts; ///< Shift and level keys
    QList<uint32_t> menuKeys; ///< Alt and Super, whose release alone may open a menu
};

/// Follows the keymap of the seat, which the compositor sends to every client.
class SeatKeymap {
public:
    /// `connection` must outlive this object and offer a seat.
    explicit SeatKeymap(WaylandConnection &connection);
    ~SeatKeymap();
    Q_DISABLE_COPY_MOVE(SeatKeymap)

    /// Absent when the seat has no keyboard, or one without these keys.
    [[nodiscard]] std::optional<CopyKeyCodes> copyKeys() const;

private:
    void close();

    // Listeners, which the client library calls while it dispatches events.
    static void onCapabilities(void *data, wl_seat *seat, uint32_t capabilities);
    static void onKeymap(void *data, wl_keyboard *keyboard, uint32_t format, int32_t file,
                         uint32_t size);

    wl_seat *seat_;
    wl_keyboard *keyboard_ = nullptr; ///< null while the seat has none
    int file_ = -1; ///< with the keymap's text; -1 without one
    uint32_t size_ = 0;
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/CopyKeys.h"
#include <wayland-client-core.h>

namespace vellumo {

class WaylandConnection;

/// Sends the copy keys from a keyboard that exists only meanwhile, through the protocol
/// virtual-keyboard-unstable-v1. Its keymap has only these keys. Modifiers are
/// those of the keyboard that was used last, so that those of the user's have no effect.
class VirtualKeyboard : public CopyKeys {
public:
    [[nodiscard]] static bool isOffered(const WaylandConnection &connection);

    /// `connection` must outlive this object and offer the protocol.
    explicit VirtualKeyboard(WaylandConnection &connection);
    ~VirtualKeyboard() override;
    Q_DISABLE_COPY_MOVE(VirtualKeyboard)

    [[nodiscard]] bool areAvailable() const override;
    bool send(QDeadlineTimer deadline) override;

private:
    WaylandConnection &connection_;
    wl_proxy *seat_;
    wl_proxy *manager_;
};

} // namespace vellumo

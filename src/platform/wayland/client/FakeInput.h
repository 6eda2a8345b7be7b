// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/CopyKeys.h"
#include "platform/wayland/client/SeatKeymap.h"

namespace vellumo {

class WaylandConnection;

/// Sends the copy keys through the protocol org_kde_kwin_fake_input, as keys of the user's keyboard
/// and layout. KWin offers it to programs whose .desktop file asks for it.
class FakeInput : public CopyKeys {
public:
    [[nodiscard]] static bool isOffered(const WaylandConnection &connection);

    /// `connection` must outlive this object and offer the protocol.
    explicit FakeInput(WaylandConnection &connection);
    ~FakeInput() override;
    Q_DISABLE_COPY_MOVE(FakeInput)

    [[nodiscard]] bool areAvailable() const override;
    bool send(QDeadlineTimer deadline) override;

private:
    WaylandConnection &connection_;
    SeatKeymap keymap_;
    wl_proxy *input_ = nullptr; ///< null before the first keys
};

} // namespace vellumo

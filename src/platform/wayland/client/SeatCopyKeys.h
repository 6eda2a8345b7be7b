// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/CopyKeys.h"
#include <memory>

namespace vellumo {

class WaylandConnection;

/// Sends the copy keys through what the compositor offers: a virtual keyboard, or fake input.
class SeatCopyKeys : public CopyKeys {
public:
    /// `connection` must outlive this object.
    explicit SeatCopyKeys(WaylandConnection &connection);

    [[nodiscard]] bool areAvailable() const override;
    bool send(QDeadlineTimer deadline) override;

private:
    std::unique_ptr<CopyKeys> offered_; ///< null before the first answer and without either
};

} // namespace vellumo

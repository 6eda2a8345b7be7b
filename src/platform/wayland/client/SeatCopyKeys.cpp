// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/SeatCopyKeys.h"

#include "platform/wayland/client/FakeInput.h"
#include "platform/wayland/client/VirtualKeyboard.h"
#include "platform/wayland/client/WaylandConnection.h"

namespace vellumo {

SeatCopyKeys::SeatCopyKeys(WaylandConnection &connection)
{
    connection.whenAnswered([this, &connection] {
        if (VirtualKeyboard::isOffered(connection)) {
            offered_ = std::make_unique<VirtualKeyboard>(connection);
        } else if (FakeInput::isOffered(connection)) {
            offered_ = std::make_unique<FakeInput>(connection);
        }
    });
}

bool SeatCopyKeys::areAvailable() const
{
    return offered_ && offered_->areAvailable();
}

bool SeatCopyKeys::send(QDeadlineTimer deadline)
{
    return offered_ && offered_->send(deadline);
}

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QtGlobal>

namespace vellumo {

/// Sends Control+Insert to the native window that has the keyboard. It copies in every toolkit and
/// keyboard layout. Main thread only.
class CopyKeys {
public:
    CopyKeys() = default;
    virtual ~CopyKeys() = default;
    Q_DISABLE_COPY_MOVE(CopyKeys)

    /// Returns false before the compositor has answered, after the connection is lost, and where
    /// the compositor does not accept keys from clients.
    [[nodiscard]] virtual bool areAvailable() const = 0;

    /// Sends the keys, without the modifiers that the user holds, and blocks until the compositor
    /// has processed them. Returns false when they may not have arrived.
    virtual bool send(QDeadlineTimer deadline) = 0;
};

} // namespace vellumo

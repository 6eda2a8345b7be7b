// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>
#include <QList>
#include <chrono>
#include <functional>

namespace vellumo {

/// What a kept connection depends on. After a suspend or in another network it may be dead without
/// a word from the other side.
struct NetworkPlace {
    using Source = std::function<NetworkPlace()>;

    std::chrono::milliseconds slept{0}; ///< how long this machine has been suspended since it began
    QList<QHostAddress> addresses = {}; ///< of this machine, sorted, as far as they reach others

    /// Asks the system. Takes about as long as one system call for each interface.
    [[nodiscard]] static NetworkPlace current();

    /// Whether connections that were made there may have died since.
    [[nodiscard]] bool isLeft(const NetworkPlace &now) const;
};

} // namespace vellumo

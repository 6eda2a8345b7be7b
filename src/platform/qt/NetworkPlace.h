// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QHostAddress>
#include <QList>
#include <chrono>
#include <functional>

namespace vellumo {

/// The conditions under which connections were made. After a suspend or in another network they may
/// be dead without notice from the peer.
struct NetworkPlace {
    using Source = std::function<NetworkPlace()>;

    /// Time that this machine has been suspended since its start.
    std::chrono::milliseconds slept{0};
    /// Of this machine, sorted, without loopback and link-local ones.
    QList<QHostAddress> addresses = {};

    /// Queries the system; takes about one system call for each interface.
    [[nodiscard]] static NetworkPlace current();

    /// Returns whether connections that were made under these conditions may be dead now.
    [[nodiscard]] bool isLeft(const NetworkPlace &now) const;
};

} // namespace vellumo

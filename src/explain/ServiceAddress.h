// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

namespace vellumo {

/// The base address of a service, as a person types or pastes it.
struct ServiceAddress {
    enum class Problem : quint8 {
        none,
        noAddress, ///< blanks inside, no host, or another scheme than http and https
        insecure, ///< http to a host beyond this machine and private networks
        credentials, ///< a user's name or password in it
        query, ///< something after ? or #
    };

    QString base; ///< ready to be used, without a slash at its end; empty for the usual service
    Problem problem = Problem::none;

    /// Adds what is missing (https, or http to this machine and private addresses; /v1 where there
    /// is no path) and takes off what was pasted too much (/chat/completions).
    [[nodiscard]] static ServiceAddress fromInput(const QString &text);

    friend bool operator==(const ServiceAddress &, const ServiceAddress &) = default;
};

} // namespace vellumo

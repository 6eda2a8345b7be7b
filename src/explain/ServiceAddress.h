// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QUrl>

namespace vellumo {

/// The base address of a service, as typed or pasted by the user.
struct ServiceAddress {
    enum class Problem : quint8 {
        None,
        NoAddress, ///< contains white space, has no host, or a scheme other than http and https
        Insecure, ///< http to a host beyond this machine and private networks
        Credentials, ///< contains a user name or password
        Query, ///< has a query or fragment
    };

    QString base; ///< normalized, without a trailing slash; empty for the default service
    Problem problem = Problem::None;

    /// Normalizes the input: adds a missing scheme (https, or http for this machine and private
    /// addresses) and a missing path (/v1), and removes /chat/completions.
    [[nodiscard]] static ServiceAddress fromInput(const QString &text);

    friend bool operator==(const ServiceAddress &, const ServiceAddress &) = default;
};

} // namespace vellumo

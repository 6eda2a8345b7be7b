// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// A mistake in the configuration, because of which something in it does not count. Has no value of
/// an entry: those may be secret.
struct ConfigurationFault {
    enum class Kind : quint8 {
        Unopenable, ///< the file is there and cannot be read
        Malformed, ///< the file is no JSON object
        Entry, ///< the entry's value is not a string
        Address, ///< the entry, which may be of the environment, is no web address
    };
    Kind kind = Kind::Malformed;
    QString path = {}; ///< of the file; empty for an address
    int line = 0; ///< of malformed, from 1
    QString entry = {}; ///< name of an entry or address
    friend bool operator==(const ConfigurationFault &, const ConfigurationFault &) = default;
};

/// One line for a log.
[[nodiscard]] QString describe(const ConfigurationFault &fault);

} // namespace vellumo

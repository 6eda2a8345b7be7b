// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "settings/ConfigurationFault.h"

using namespace Qt::StringLiterals;

namespace vellumo {

QString describe(const ConfigurationFault &fault)
{
    switch (fault.kind) {
    case ConfigurationFault::Kind::Unopenable:
        return u"%1 cannot be opened; nothing in it counts"_s.arg(fault.path);
    case ConfigurationFault::Kind::Malformed:
        return u"%1 has a mistake in line %2; nothing in it counts"_s.arg(fault.path)
            .arg(fault.line);
    case ConfigurationFault::Kind::Entry:
        return u"%1: the value of %2 is no string and does not count"_s.arg(fault.path,
                                                                            fault.entry);
    case ConfigurationFault::Kind::Address:
        return u"%1 is no web address"_s.arg(fault.entry);
    }
    Q_UNREACHABLE();
}

} // namespace vellumo

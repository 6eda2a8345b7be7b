// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Base addresses of services, as people type and paste them.

#include "Fuzzing.h"
#include "explain/ServiceAddress.h"
#include "platform/WebAddress.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto address = ServiceAddress::fromInput(text(data, size));
    require(address.base.isEmpty() || address.problem == ServiceAddress::Problem::None,
            "what has a problem is no address");
    if (!address.base.isEmpty()) {
        require(!refusalOf(QUrl(address.base)), "something may be sent there");
        require(!address.base.endsWith(u'/'), "a path can be added");
        // where a path was taken off, the usual one is added to what is left
        require(QUrl(address.base).path().isEmpty()
                    || ServiceAddress::fromInput(address.base) == address,
                "it stays what it is");
    }
    return 0;
}

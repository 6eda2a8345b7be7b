// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Selections as other programs send them.

#include "Fuzzing.h"
#include "platform/x11/SelectionValue.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    SelectionValue value;
    value.type = (data[0] & 1) != 0 ? XCB_ATOM_STRING : XCB_ATOM_NONE;
    value.format = static_cast<quint8>(8U << ((data[0] >> 1) % 3));
    value.bytes = bytes(data + 1, size - 1);
    const QString read = selectionText(value);
    require(read.isValidUtf16(), "a text has whole characters");
    require(read.size() <= value.bytes.size(), "a text is no longer than its bytes");
    return 0;
}

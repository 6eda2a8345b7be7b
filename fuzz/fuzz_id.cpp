// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Ids of notes, in the file's form and in the service's.

#include "Fuzzing.h"
#include "notes/StoreFile.h"
#include "notes/StrictUuid.h"
#include "sync/DataConnectWire.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString written = text(data, size);
    const auto strict = strictUuid({reinterpret_cast<const char *>(data), size});
    require(!strict || noteIdText(*strict) == written.toUpper(), "the id that is written");
    const auto loose = DataConnectWire::uuid(written);
    require(!strict || strict == loose, "both read the usual form alike");
    if (loose) {
        QString digits = written.toUpper();
        require(noteIdText(*loose).remove(u'-') == digits.remove(u'-'), "only hyphens differ");
    }
    return 0;
}

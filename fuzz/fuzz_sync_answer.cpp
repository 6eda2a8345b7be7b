// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Answers of the notes service.

#include "Fuzzing.h"
#include "notes/StoreFile.h"
#include "sync/DataConnectWire.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const HttpResponse answer{.status = (data[0] & 7) == 7 ? 409 : 200,
                              .body = bytes(data + 1, size - 1)};
    const auto error = DataConnectWire::done(answer);
    const auto insertion = DataConnectWire::noteInserted(answer);
    require(!error || insertion, "what is not done inserts nothing");
    const auto listed = DataConnectWire::listedNotes(answer, 0);
    require(!error || !listed.isOk(), "what is not done lists nothing");
    if (listed.isOk()) {
        const StoreFile file{{{{}, listed.value()}}, NoteSyncStates()};
        require(StoreFile::fromJson(file.toJson()).has_value(), "what is listed can be kept");
    }
    return 0;
}

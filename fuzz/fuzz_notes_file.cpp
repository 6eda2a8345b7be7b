// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Notes that were read from a file are the same after they are written and read again.

#include "Fuzzing.h"
#include "notes/StoreFile.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

namespace {

bool isSame(const QList<StoredNotesBucket> &left, const QList<StoredNotesBucket> &right)
{
    return std::ranges::equal(left, right, [](const auto &a, const auto &b) {
        return a.context == b.context && a.notes == b.notes;
    });
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray json = bytes(data, size);
    auto file = StoreFile::fromJson(json);
    const auto older = StoreFile::bucketsFromOlderLayout(json);
    require(!file || !older, "a file has one layout");
    if (older) {
        file = StoreFile{*older, std::nullopt};
    }
    if (file) {
        const auto again = StoreFile::fromJson(file->toJson());
        require(again.has_value(), "what is written can be read");
        require(isSame(again->buckets, file->buckets), "the notes are the same");
        require(again->syncStates.value_or(NoteSyncStates())
                    == file->syncStates.value_or(NoteSyncStates()),
                "the sync states are the same");
    }
    return 0;
}

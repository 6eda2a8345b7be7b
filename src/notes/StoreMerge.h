// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/StoreFile.h"
#include <QSet>

namespace vellumo {

/// Takes over what another writer has put into the notes file, so that neither side loses anything.
///
/// A note of theirs that is nowhere in `buckets` is appended to the bucket of its context. Of a
/// note that both have, the side with more follow-ups leads, ours if there are as many; what only
/// the other side has been asked comes after. A note that they have filed under a place stays
/// there, rather than among those from other devices. A state counts no follow-up as sent that
/// neither side has sent; what a state cannot express is sent once more.
///
/// Returns the keys of the buckets that have changed.
[[nodiscard]] QSet<QString> mergeStoreFile(QHash<QString, StoredNotesBucket> &buckets,
                                           NoteSyncStates &states, const StoreFile &theirs);

} // namespace vellumo

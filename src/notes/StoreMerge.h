// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/StoreFile.h"
#include <QSet>

namespace vellumo {

/// Merges the content that another program has written to the notes file, so that neither side
/// loses anything.
///
/// A note of theirs that is in no bucket of `buckets` is appended to the bucket of its context. If
/// both sides have a note, the longer list of follow-ups is the base, ours if they are equal, and
/// further follow-ups of the other side are appended. A note that they have filed under a place
/// moves there from the bucket of other devices. A sync state never counts a follow-up that neither
/// side has sent; what it cannot express is sent again.
///
/// Returns the keys of the changed buckets.
[[nodiscard]] QSet<QString> mergeStoreFile(QHash<QString, StoredNotesBucket> &buckets,
                                           NoteSyncStates &states, const StoreFile &theirs);

} // namespace vellumo

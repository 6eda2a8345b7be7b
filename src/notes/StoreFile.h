// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QHash>
#include <QMap>
#include <optional>

namespace vellumo {

/// All notes of one reading context.
struct StoredNotesBucket {
    ReadingContext context; ///< that of the first note; never replaced
    QList<ReadingNote> notes; ///< in insertion order
};

/// The parts of a note that the server already has.
struct NoteSyncState {
    bool created = false; ///< the note itself
    qint64 syncedFollowUpCount = 0; ///< number of its follow-ups, from the first on
    friend bool operator==(const NoteSyncState &, const NoteSyncState &) = default;
};

/// Sync states by note id in canonical upper-case text.
using NoteSyncStates = QMap<QString, NoteSyncState>;

/// Returns the canonical 36-character text of an id, in upper case.
[[nodiscard]] QString noteIdText(const QUuid &id);

/// Returns a bucket as encoded in the notes file, with the file's indentation but not that of its
/// first line. Cache it while the bucket does not change: encoding is most of the cost of a save.
[[nodiscard]] QByteArray encodedBucket(const StoredNotesBucket &bucket);

/// Returns the whole file around encoded buckets, in pieces to be written in order: joining them
/// would copy all notes for each change.
[[nodiscard]] QList<QByteArray> encodedStoreFile(const QList<QByteArray> &encodedBuckets,
                                                 const NoteSyncStates &states);

/// The notes file: JSON in UTF-8, pretty-printed, keys sorted at every level.
struct StoreFile {
    QList<StoredNotesBucket> buckets;
    std::optional<NoteSyncStates> syncStates; ///< absent in a file of an older layout

    [[nodiscard]] QByteArray toJson() const;

    /// Decodes a file of either layout. Notes of the older one get the state of notes that are on
    /// the server already.
    [[nodiscard]] static std::optional<StoreFile> decode(const QByteArray &json);

    /// Returns whether two buckets have the same key. Such a file is never written.
    [[nodiscard]] bool hasTwinBuckets() const;

    /// Decodes a file of the current layout, an object. Strict: absent when any key is missing or
    /// of another type, an id is malformed, or the bytes are not one JSON text in valid UTF-8.
    [[nodiscard]] static std::optional<StoreFile> fromJson(const QByteArray &json);

    /// Decodes the older layout, an array of buckets without sync states; equally strict.
    [[nodiscard]] static std::optional<QList<StoredNotesBucket>>
    bucketsFromOlderLayout(const QByteArray &json);
};

} // namespace vellumo

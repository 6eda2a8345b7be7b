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

/// What the server already has of a note.
struct NoteSyncState {
    bool created = false; ///< the note itself
    qint64 syncedFollowUpCount = 0; ///< its follow-ups, counted from the first
    friend bool operator==(const NoteSyncState &, const NoteSyncState &) = default;
};

/// Sync states by note id in canonical upper-case text.
using NoteSyncStates = QMap<QString, NoteSyncState>;

/// Canonical 36-character text of an id, in upper case.
[[nodiscard]] QString noteIdText(const QUuid &id);

/// A bucket as encoded in the notes file, with the file's indentation but not that of its first
/// line. Worth keeping while the bucket does not change: encoding is most of what a save costs.
[[nodiscard]] QByteArray encodedBucket(const StoredNotesBucket &bucket);

/// The whole file around encoded buckets, in pieces to be written one after the other: joining them
/// would copy all notes for each change.
[[nodiscard]] QList<QByteArray> encodedStoreFile(const QList<QByteArray> &encodedBuckets,
                                                 const NoteSyncStates &states);

/// The notes file: JSON in UTF-8, pretty-printed, keys sorted at every level.
struct StoreFile {
    QList<StoredNotesBucket> buckets;
    std::optional<NoteSyncStates> syncStates; ///< absent in a file of an older layout

    [[nodiscard]] QByteArray toJson() const;

    /// Decodes a file of either layout, with states: notes of the older one are on the server
    /// already and are not sent again.
    [[nodiscard]] static std::optional<StoreFile> decode(const QByteArray &json);

    /// Whether two buckets have the same key. No such file is written.
    [[nodiscard]] bool hasTwinBuckets() const;

    /// Decodes a file of the present layout, an object. Strict: absent when any key is missing or
    /// of another type, an id is malformed, or the bytes are not one JSON text in valid UTF-8.
    [[nodiscard]] static std::optional<StoreFile> fromJson(const QByteArray &json);

    /// Decodes the older layout, a bare array of buckets without sync states; as strict.
    [[nodiscard]] static std::optional<QList<StoredNotesBucket>>
    bucketsFromOlderLayout(const QByteArray &json);
};

} // namespace vellumo

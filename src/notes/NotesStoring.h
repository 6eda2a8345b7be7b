// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "notes/StoreFile.h"
#include <QObject>
#include <QSet>
#include <QStringList>
#include <optional>

namespace vellumo {

struct PendingNote {
    ReadingNote note;
    NoteSyncState state; ///< the part that the server already has
};

/// What NotesStoring::restore() needs to bring a note back.
struct DeletedNote {
    NoteWithContext entry;
    NoteSyncState state;
};

/// The user's notes. Synchronous; main thread only. No call reports a failure to the caller; see
/// saveFailure().
class NotesStoring : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Appends the note to the bucket of its context, as pending.
    virtual void add(const ReadingNote &note, const ReadingContext &context) = 0;

    /// Replaces the note with the same id in the context's bucket; ignored when there is none.
    virtual void update(const ReadingNote &note, const ReadingContext &context) = 0;

    /// Deletes the notes with these ids and returns them. The ids are remembered: neither a pull
    /// nor another program's copy of the notes brings them back.
    virtual QList<DeletedNote> remove(const QSet<QUuid> &ids) = 0;

    /// Undoes a deletion.
    virtual void restore(const QList<DeletedNote> &notes) = 0;

    /// Returns whether the note was deleted and not restored.
    [[nodiscard]] virtual bool isDeleted(const QUuid &id) const = 0;

    /// Returns the number of notes without building the list of allNotes().
    [[nodiscard]] virtual qsizetype noteCount() const = 0;

    /// Returns all notes, newest first.
    [[nodiscard]] virtual QList<ReadingNote> allNotes() const = 0;

    /// Returns all notes, newest first, each with the context stored in its bucket.
    [[nodiscard]] virtual QList<NoteWithContext> allNotesWithContexts() const = 0;

    /// Returns the note with this id, the newest if there are several.
    [[nodiscard]] virtual std::optional<NoteWithContext> find(const QUuid &id) const = 0;

    /// Returns the notes that the server does not have, or not with all their follow-ups.
    /// Unordered.
    [[nodiscard]] virtual QList<PendingNote> pendingSync() const = 0;

    /// Returns how many of the notes from the server mergeRemote() would add.
    [[nodiscard]] virtual qsizetype unknownCount(const QList<ReadingNote> &notes) const = 0;

    /// Adds the notes from the server that are not known yet.
    virtual void mergeRemote(const QList<ReadingNote> &notes) = 0;

    /// Records that the server has the note and its first followUpCount follow-ups.
    virtual void markSynced(const QUuid &noteId, qint64 followUpCount) = 0;

    /// Returns the paths of notes files that could not be read and were set aside, newest first.
    [[nodiscard]] virtual QStringList unreadableFiles() const { return {}; }

    /// Returns the system's message if the last save failed; absent otherwise. A failed save is
    /// repeated with the next change, by retrySave(), and at the end.
    [[nodiscard]] virtual std::optional<QString> saveFailure() const { return std::nullopt; }

    /// Repeats a failed save. Does nothing unless there is a saveFailure().
    virtual void retrySave() { }

Q_SIGNALS:
    /// Emitted when unreadableFiles() or saveFailure() has changed.
    void filesChanged();

    /// Emitted synchronously after a visible change, when it has been saved; not after bookkeeping.
    void vellumoNotesDidChange();
};

} // namespace vellumo

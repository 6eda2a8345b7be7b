// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "notes/StoreFile.h"
#include <QObject>
#include <QStringList>
#include <optional>

namespace vellumo {

struct PendingNote {
    ReadingNote note;
    NoteSyncState state; ///< what the server already has of it
};

/// The user's notes as the rest of the program sees them. Synchronous; main thread only. Nothing
/// here fails towards the caller.
class NotesStoring : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Appends the note to the bucket of its context, as one the server does not have.
    virtual void add(const ReadingNote &note, const ReadingContext &context) = 0;

    /// Replaces the note with the same id in the context's bucket; ignored when there is none.
    virtual void update(const ReadingNote &note, const ReadingContext &context) = 0;

    /// How many allNotes() would answer, without building the list.
    [[nodiscard]] virtual qsizetype noteCount() const = 0;

    /// All notes, newest first.
    [[nodiscard]] virtual QList<ReadingNote> allNotes() const = 0;

    /// All notes, newest first, each with the context stored in its bucket.
    [[nodiscard]] virtual QList<NoteWithContext> allNotesWithContexts() const = 0;

    /// The note with this id, the newest if there are several.
    [[nodiscard]] virtual std::optional<NoteWithContext> find(const QUuid &id) const = 0;

    /// The notes that the server does not have, or not with all their follow-ups. Unordered.
    [[nodiscard]] virtual QList<PendingNote> pendingSync() const = 0;

    /// How many of the notes from the server mergeRemote() would take over.
    [[nodiscard]] virtual qsizetype unknownCount(const QList<ReadingNote> &notes) const = 0;

    /// Takes over the notes from the server that are not known yet.
    virtual void mergeRemote(const QList<ReadingNote> &notes) = 0;

    /// Remembers that the server has the note and its first followUpCount follow-ups.
    virtual void markSynced(const QUuid &noteId, qint64 followUpCount) = 0;

    /// Files of notes that could not be read and are kept as they are; paths, newest first.
    [[nodiscard]] virtual QStringList unreadableFiles() const { return {}; }

    /// What stood in the way of the last save, in the system's words; absent when it worked. What
    /// could not be saved is saved with the next change, by retrySave(), or at the end.
    [[nodiscard]] virtual std::optional<QString> saveFailure() const { return std::nullopt; }

    /// Saves what could not be saved before. Does nothing unless there is a saveFailure().
    virtual void retrySave() { }

Q_SIGNALS:
    /// unreadableFiles() or saveFailure() answers something else.
    void filesChanged();

    /// Emitted synchronously after a change that the user can see has been saved; not after
    /// bookkeeping.
    void vellumoNotesDidChange();
};

} // namespace vellumo

// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/NotesStoring.h"
#include <algorithm>

namespace vellumo::test {

/// Notes set by the test, without a file.
class SampleNotes : public NotesStoring {
public:
    QList<NoteWithContext> notes; ///< newest first
    QSet<QUuid> deleted;
    int updates = 0;
    QStringList unreadable;
    std::optional<QString> failure;

    void add(const ReadingNote &note, const ReadingContext &context) override
    {
        notes.prepend({note, context});
        Q_EMIT vellumoNotesDidChange();
    }
    void update(const ReadingNote &note, const ReadingContext &context) override
    {
        ++updates;
        for (NoteWithContext &pair : notes) {
            if (pair.note.id == note.id && pair.context.key == context.key)
                pair.note = note;
        }
    }
    QList<DeletedNote> remove(const QSet<QUuid> &ids) override
    {
        QList<DeletedNote> removed;
        notes.removeIf([&](const NoteWithContext &pair) {
            if (ids.contains(pair.note.id))
                removed.append({pair, {}});
            return ids.contains(pair.note.id);
        });
        deleted += ids;
        Q_EMIT vellumoNotesDidChange();
        return removed;
    }
    void restore(const QList<DeletedNote> &removed) override
    {
        for (const DeletedNote &note : removed) {
            deleted.remove(note.entry.note.id);
            notes.append(note.entry);
        }
        Q_EMIT vellumoNotesDidChange();
    }
    [[nodiscard]] bool isDeleted(const QUuid &id) const override { return deleted.contains(id); }
    [[nodiscard]] qsizetype noteCount() const override { return notes.size(); }
    [[nodiscard]] QList<ReadingNote> allNotes() const override
    {
        QList<ReadingNote> all;
        for (const NoteWithContext &pair : notes)
            all.append(pair.note);
        return all;
    }
    [[nodiscard]] QList<NoteWithContext> allNotesWithContexts() const override { return notes; }
    [[nodiscard]] std::optional<NoteWithContext> find(const QUuid &id) const override
    {
        const auto found =
            std::ranges::find(notes, id, [](const auto &pair) { return pair.note.id; });
        return found != notes.end() ? std::optional(*found) : std::nullopt;
    }
    [[nodiscard]] QList<PendingNote> pendingSync() const override { return {}; }
    [[nodiscard]] qsizetype unknownCount(const QList<ReadingNote> & /*notes*/) const override
    {
        return 0;
    }
    void mergeRemote(const QList<ReadingNote> & /*notes*/) override { }
    void markSynced(const QUuid & /*noteId*/, qint64 /*followUpCount*/) override { }
    [[nodiscard]] QStringList unreadableFiles() const override { return unreadable; }
    [[nodiscard]] std::optional<QString> saveFailure() const override { return failure; }
};

} // namespace vellumo::test
